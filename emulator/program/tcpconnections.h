#pragma once

#include <QString>

#include <optional>

/// What becomes of a second host on a TCP port that has one already.
enum class TcpConnections {
    /// It takes the line over, and the former connection is cut.
    Last,
    /// It is turned away.
    First,
    /// Both are served, one exchange after the other.
    Both
};

QString nameOf(TcpConnections rule);
std::optional<TcpConnections> tcpConnectionsNamed(const QString& name);
