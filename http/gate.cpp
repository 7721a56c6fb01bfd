#include "http/gate.h"

#include "http/problem.h"

#include <QUrl>

#include <arpa/inet.h>

namespace http {

namespace {

bool isInDigits(const QString& host)
{
    in6_addr address;
    const QByteArray text = host.toLatin1();
    return inet_pton(AF_INET, text.constData(), &address) == 1
        || inet_pton(AF_INET6, text.constData(), &address) == 1;
}

QUrl asUrl(const QByteArray& host)
{
    return QUrl(QStringLiteral("//") + QString::fromLatin1(host), QUrl::StrictMode);
}

/// Whether a page came from the very host and port that it asks; behind a proxy that ends TLS the scheme
/// differs.
bool isSameHost(const QByteArray& origin, const QByteArray& host)
{
    const QUrl page(QString::fromLatin1(origin), QUrl::StrictMode);
    const QUrl asked = asUrl(host);
    const int usual = page.scheme() == QLatin1String("https") ? 443 : 80;
    return !page.host().isEmpty() && page.host() == asked.host() && page.port(usual) == asked.port(usual);
}

} // namespace

void Gate::check(const Request& request) const
{
    const QByteArray host = request.headers.value("Host");
    // HTTP/1.0 has none.
    if (request.headers.contains("Host")) {
        const QUrl asked = asUrl(host);
        if (!asked.isValid() || asked.host().isEmpty() || !asked.path().isEmpty())
            throw Problem(400, QStringLiteral("The Host header is not a host."));
        // A page whose name was made to lead here cannot have a token.
        if (!request.caller && !isOurName(asked.host()))
            throw Problem(421, QStringLiteral("No host of this name is served here."));
    }
    const QByteArray origin = request.headers.value("Origin");
    if (request.headers.contains("Origin") && !isNamedOrigin(origin) && !isSameHost(origin, host))
        throw Problem(403, QStringLiteral("Pages of this origin may not ask here."));
}

void Gate::allow(const Request& request, Headers& answer) const
{
    if (origins.isEmpty())
        return;
    answer.add("Vary", "Origin");
    const QByteArray origin = request.headers.value("Origin");
    if (!isNamedOrigin(origin))
        return;
    answer.set("Access-Control-Allow-Origin", origin);
    answer.set("Access-Control-Expose-Headers", "Location, Retry-After, ETag, Allow");
    if (request.method == "OPTIONS") {
        answer.set("Access-Control-Allow-Methods", answer.value("Allow"));
        answer.set("Access-Control-Allow-Headers",
            "Authorization, Content-Type, Idempotency-Key, If-None-Match, Last-Event-ID, Prefer");
        answer.set("Access-Control-Max-Age", "600");
    }
}

bool Gate::isOurName(const QString& host) const
{
    return isInDigits(host) || host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0
        || hostNames.contains(host, Qt::CaseInsensitive);
}

bool Gate::isNamedOrigin(const QByteArray& origin) const
{
    return origins.contains(QString::fromLatin1(origin), Qt::CaseInsensitive);
}

} // namespace http
