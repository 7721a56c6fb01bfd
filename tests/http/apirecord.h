#pragma once

#include "http/router.h"
#include "tests/schemacheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// All that a program serves, is asked and answers, to be held against the description of its interface.
class ApiRecord
{
public:
    explicit ApiRecord(const http::Router& router)
        : m_router(router)
    {
        for (const http::Route& route : router.routes())
            add({{"route", QJsonArray{QString(route.method), route.pattern}}});
    }

    void add(const QByteArray& method, const QByteArray& target, int status, const QByteArray& type,
        const QByteArray& body)
    {
        http::Request request = http::Request::of(method, target);
        QString pattern = m_router.find(request).pattern;
        // The name of a picture's format stands behind its number.
        for (const QByteArray format : {".svg", ".png", ".pdf"}) {
            if (request.path.endsWith(format))
                pattern += format;
        }
        add({{"route", QJsonArray{QString(method), pattern}}, {"status", status}, {"type", QString(type)},
            {"body", type.contains("json") ? QString::fromUtf8(body) : QString()}});
    }

    /// Empty when all is as the first file of docs/ says, in the words of the others.
    QByteArray findings(const QStringList& descriptions) const
    {
        return schemaFindings("http/openapi.py", descriptions, m_lines);
    }

private:
    void add(const QJsonObject& line)
    {
        m_lines += QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
    }

    const http::Router& m_router;
    QByteArray m_lines;
};
