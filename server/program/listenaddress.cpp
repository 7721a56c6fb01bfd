#include "program/listenaddress.h"

#include <QRegularExpression>

#include <arpa/inet.h>

namespace frserver {

namespace {

bool isLoopback(const QString& address)
{
    in_addr four{};
    in6_addr six{};
    const QByteArray text = address.toLatin1();
    constexpr unsigned loopbackNet = 127;
    if (inet_pton(AF_INET, text.constData(), &four) == 1)
        return ntohl(four.s_addr) >> 24 == loopbackNet;
    return inet_pton(AF_INET6, text.constData(), &six) == 1 && IN6_IS_ADDR_LOOPBACK(&six);
}

[[noreturn]] void fail(const QString& text, const char* why)
{
    throw std::invalid_argument((QStringLiteral("\"%1\" ").arg(text) + QLatin1String(why)).toStdString());
}

} // namespace

ListenAddress ListenAddress::of(const QString& text, bool hasTls, bool hasTokens)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:(?:\\[([0-9A-Fa-f:.]+)\\]|([0-9.]+)|localhost):)?([0-9]{1,5})\\z"));
    const QRegularExpressionMatch match = form.match(text);
    const uint port = match.captured(3).toUInt();
    constexpr uint greatestPort = 65535;
    if (!match.hasMatch() || port > greatestPort)
        fail(text, "is no ADDRESS:PORT as 127.0.0.1:8403 or [::1]:8403");
    ListenAddress listen{.port = static_cast<quint16>(port)};
    for (const int group : {1, 2}) {
        if (match.hasCaptured(group) && !match.captured(group).isEmpty())
            listen.address = match.captured(group);
    }
    in6_addr bytes{};
    const QByteArray digits = listen.address.toLatin1();
    if (inet_pton(AF_INET, digits.constData(), &bytes) != 1
        && inet_pton(AF_INET6, digits.constData(), &bytes) != 1)
        fail(text, "is no ADDRESS:PORT as 127.0.0.1:8403 or [::1]:8403");
    listen.requireSafe(text, hasTls, hasTokens);
    return listen;
}

bool ListenAddress::isLoopback() const
{
    return frserver::isLoopback(address);
}

void ListenAddress::requireSafe(const QString& text, bool hasTls, bool hasTokens) const
{
    if (isLoopback())
        return;
    if (!hasTls)
        fail(text,
            "is not of this machine alone (127.0.0.1, ::1), and without TLS receipts and tokens would be read on "
            "the way: tls-certificate and tls-key, which frserver cert init makes");
    if (!hasTokens)
        fail(text,
            "is not of this machine alone (127.0.0.1, ::1), and without tokens whoever comes would sell: "
            "frserver token add");
}

} // namespace frserver
