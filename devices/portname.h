#pragma once

#include <QString>

#include <optional>

namespace devices {

/// Host and port number out of a port's name.
struct TcpAddress
{
    QString host;
    quint16 port = 0;
};

/// True for a name that begins with "tcp:", good or not.
bool isTcpName(const QString& name);
/// Nothing when the name is no "tcp:host:port".
std::optional<TcpAddress> tcpAddressOf(const QString& name);
/// Of a port's name: what is the same for all machines of the network, an address in one spelling. Empty for
/// a port of this machine.
QString networkAddress(const QString& name);
/// The path for a serial line's path or bare name: of one that is not in /dev, but in the current folder,
/// that one's.
QString devicePath(const QString& name);

} // namespace devices
