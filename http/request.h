#pragma once

#include "http/caller.h"
#include "http/headers.h"

#include <QJsonObject>
#include <QMap>

#include <chrono>
#include <optional>

namespace http {

/// A whole request, body included.
struct Request
{
    QByteArray method;
    /// As it was asked for, still encoded, without the query.
    QByteArray path;
    /// Those of the path, decoded one by one, so that "a%2Fb" is one of them. None for "/".
    QStringList segments;
    /// In their order, decoded; "+" is a space, as forms write it.
    QList<std::pair<QString, QString>> query;
    Headers headers;
    QByteArray body;
    /// Of the client, as digits.
    QByteArray clientAddress;
    /// What stands in the place of the braces of the route's pattern; set by the router.
    QMap<QString, QString> parameters;
    /// Whose token came with the request; set by the site.
    std::optional<Caller> caller;

    /// Takes the target of a request line apart. Throws Problem (400) when it is none.
    static Request of(const QByteArray& method, const QByteArray& target);

    QString parameter(const QString& name) const { return parameters.value(name); }
    /// The first one of that name.
    std::optional<QString> queryValue(const QString& name) const;
    /// The same as a number within these limits. Throws Problem (400) for anything else.
    std::optional<int> queryNumber(const QString& name, int least, int most) const;
    /// The body, which may begin with a BOM. Throws Problem (400) when it is not a JSON object.
    QJsonObject json() const;
    /// Of "Prefer: wait=SECONDS".
    std::optional<std::chrono::seconds> preferredWait() const;
};

} // namespace http
