#pragma once

#include "http/request.h"
#include "http/response.h"

#include <QStringList>

namespace http {

/// Keeps foreign web pages out: a browser's user may have a page open that would work a till on this machine.
class Gate
{
public:
    /// Names that this machine is asked for by, besides "localhost" and any address in digits.
    QStringList hostNames;
    /// Such as "https://shop.example": pages from elsewhere that may ask (CORS).
    QStringList origins;

    /// Throws Problem: 421 for a Host that is none of these (a foreign name may be made to lead here, digits
    /// not) and comes without a token that is known, 403 for a foreign Origin, 400 for a Host that is no
    /// host.
    void check(const Request& request) const;
    /// Adds what lets the page of a named origin read the answer.
    void allow(const Request& request, Headers& answer) const;

private:
    bool isOurName(const QString& host) const;
    bool isNamedOrigin(const QByteArray& origin) const;
};

} // namespace http
