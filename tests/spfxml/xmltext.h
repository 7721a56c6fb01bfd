#pragma once

#include "spfxml/requestparams.h"

#include <QDomDocument>
#include <QStringList>

#include <gtest/gtest.h>

/// The document of a text; fails the test when it is not XML.
inline QDomDocument xmlDocument(const QString& text)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(text)) << text.toStdString();
    return document;
}

/// An answer document with keys and texts: "key=text|key=text".
inline QDomDocument answerWith(const char* values)
{
    QString text = QStringLiteral("<pa n='root' t='7'><pa n='group' t='7'>");
    for (const QString& value : QString::fromUtf8(values).split(QLatin1Char('|')))
        text += QStringLiteral("<pa n='%1' t='1'>%2</pa>")
                    .arg(value.section(QLatin1Char('='), 0, 0), value.section(QLatin1Char('='), 1));
    return xmlDocument(text + QStringLiteral("</pa></pa>"));
}

/// A tree on one line: "name:type=value" for a leaf, "name:type{...}" for a container.
inline std::string flat(const QList<spfxml::RequestParams>& params)
{
    QStringList nodes;
    for (const spfxml::RequestParams& param : params) {
        const int type = static_cast<int>(param.getType());
        const QString inner = QString::fromStdString(flat(param.getParams()));
        nodes += QString("%1:%2").arg(param.getName()).arg(type)
            + (type == 6 || type == 7 ? "{" + inner + "}" : "=" + param.getFormattedValue());
    }
    return nodes.join(' ').toStdString();
}
inline std::string flat(const QDomDocument& document)
{
    return flat(QList<spfxml::RequestParams>{spfxml::RequestParams::fromElement(document.documentElement())});
}
