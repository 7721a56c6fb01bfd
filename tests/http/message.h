#pragma once

#include "http/answer.h"
#include "http/request.h"

#include <QJsonDocument>

/// A request as a server would have it.
inline http::Request message(const QByteArray& method, const QByteArray& target,
    const QList<http::Headers::Field>& headers = {}, const QByteArray& body = {})
{
    http::Request request = http::Request::of(method, target);
    request.headers.add("host", "127.0.0.1:8080");
    for (const auto& [name, value] : headers)
        request.headers.set(name, value);
    request.body = body;
    return request;
}

inline http::Response whole(const http::Answer& answer)
{
    return std::get<http::Response>(answer);
}

inline QJsonObject object(const http::Response& response)
{
    return QJsonDocument::fromJson(response.body).object();
}
