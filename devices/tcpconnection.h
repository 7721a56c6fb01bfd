#pragma once

#include <QString>

#include <functional>

namespace devices {

/// A socket that is connected, or why there is none.
struct TcpConnection
{
    /// The descriptor, which is the caller's; negative without a connection.
    int socket = -1;
    /// In the system's words.
    QString error;
};

/// Tries the host's addresses one after the other for so many milliseconds in all. The function is called at
/// least every tenth of a second while the connection is awaited; what it throws ends the wait. Looking up a
/// name in the network is the system's own wait and is not counted.
TcpConnection connectTcp(
    const QString& host, quint16 port, int milliseconds, const std::function<void()>& whileWaiting);

} // namespace devices
