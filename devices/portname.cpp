#include "portname.h"

#include <QFileInfo>
#include <QHostAddress>
#include <QRegularExpression>

namespace devices {

namespace {

const QString tcpPrefix = QStringLiteral("tcp:");

/// Of an address in digits the one spelling; one of IPv4 may be written as one of IPv6.
QString hostSpelling(const QString& host, const QHostAddress& ip)
{
    bool isIpv4 = false;
    const QHostAddress ipv4(ip.toIPv4Address(&isIpv4));
    if (isIpv4)
        return ipv4.toString();
    return ip.isNull() ? host : ip.toString();
}

} // namespace

bool isTcpName(const QString& name)
{
    return name.startsWith(tcpPrefix);
}

std::optional<TcpAddress> tcpAddressOf(const QString& name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^tcp:(?:\\[([0-9A-Fa-f:.]+)\\]|([^:\\s]+)):(\\d{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(name);
    const int port = match.captured(3).toInt();
    if (!match.hasMatch() || port < 1 || port > 0xFFFF)
        return std::nullopt;
    return TcpAddress{match.captured(1) + match.captured(2), static_cast<quint16>(port)};
}

QString networkAddress(const QString& name)
{
    const std::optional<TcpAddress> address = tcpAddressOf(name);
    if (!address)
        return {};
    const QString host = address->host.toLower();
    const QHostAddress ip(host);
    const bool isOwn = host == QStringLiteral("localhost") || ip.isLoopback() || ip == QHostAddress::AnyIPv4
        || ip == QHostAddress::AnyIPv6;
    return isOwn ? QString() : QStringLiteral("%1:%2").arg(hostSpelling(host, ip)).arg(address->port);
}

QString devicePath(const QString& name)
{
    const bool isPath = name.startsWith(QLatin1Char('/')) || name.startsWith(QStringLiteral("./"))
        || name.startsWith(QStringLiteral("../"));
    if (isPath)
        return name;
    const QString device = QStringLiteral("/dev/") + name;
    const QFileInfo here(name);
    return !QFileInfo::exists(device) && here.exists() ? here.absoluteFilePath() : device;
}

} // namespace devices
