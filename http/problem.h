#pragma once

#include "http/response.h"

#include <QString>

#include <exception>

namespace http {

/// An answer that says what is wrong (application/problem+json, RFC 9457). A handler returns its response, or
/// throws it.
class Problem : public std::exception
{
public:
    /// The title is the status's own name, and the type "about:blank".
    explicit Problem(int status, const QString& detail = {});
    /// A type of the program's own: the last part of its URI, such as "shift-closed", and its title.
    Problem(int status, const QString& type, const QString& title, const QString& detail);

    /// The same with a member, or several, of the program's own.
    Problem with(const QString& member, const QJsonValue& value) const;
    Problem with(const QJsonObject& members) const;
    Problem withHeader(const QByteArray& name, const QByteArray& value) const;

    int status() const { return m_status; }
    Response response() const;
    const char* what() const noexcept override { return "http::Problem"; }

private:
    int m_status;
    QJsonObject m_members;
    Headers m_headers;
};

} // namespace http
