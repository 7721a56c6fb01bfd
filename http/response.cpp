#include "http/response.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace http {

Response Response::json(const QJsonValue& value, int status)
{
    const QJsonDocument document
        = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    Response response = bytes(document.toJson(QJsonDocument::Compact) + '\n', "application/json");
    response.status = status;
    return response;
}

Response Response::text(const QString& text, int status)
{
    Response response = bytes(text.toUtf8(), "text/plain; charset=utf-8");
    response.status = status;
    return response;
}

Response Response::bytes(const QByteArray& body, const QByteArray& contentType)
{
    Response response;
    response.headers.set("Content-Type", contentType);
    response.body = body;
    return response;
}

Response Response::empty(int status)
{
    Response response;
    response.status = status;
    return response;
}

Response Response::with(const QByteArray& name, const QByteArray& value) const
{
    Response response = *this;
    response.headers.set(name, value);
    return response;
}

} // namespace http
