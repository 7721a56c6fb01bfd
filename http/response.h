#pragma once

#include "http/headers.h"

#include <QJsonObject>

namespace http {

/// A whole answer, body included.
struct Response
{
    int status = 200;
    Headers headers;
    QByteArray body;

    /// An object or an array.
    static Response json(const QJsonValue& value, int status = 200);
    /// UTF-8.
    static Response text(const QString& text, int status = 200);
    static Response bytes(const QByteArray& body, const QByteArray& contentType);
    /// 204 unless told otherwise.
    static Response empty(int status = 204);

    /// The same with that field, such as Location or Retry-After.
    Response with(const QByteArray& name, const QByteArray& value) const;
    QByteArray contentType() const { return headers.value("Content-Type"); }
};

} // namespace http
