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

ListenAddress ListenAddress::of(const QString& text)
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
    if (!isLoopback(listen.address))
        fail(text,
            "is not of this machine alone (127.0.0.1, ::1): there is no TLS yet, and receipts and tokens would be "
            "read on the way. Let a proxy that ends TLS stand in front of the service");
    return listen;
}

} // namespace frserver
