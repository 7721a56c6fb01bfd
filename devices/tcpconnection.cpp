#include "tcpconnection.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QHostInfo>
#include <QNetworkInterface>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace devices {

namespace {

constexpr int connectSliceMs = 100;

/// A socket that is closed unless it is taken.
class OwnSocket
{
public:
    explicit OwnSocket(int family)
        : m_descriptor(::socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
    }
    ~OwnSocket()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    OwnSocket(const OwnSocket&) = delete;
    OwnSocket& operator=(const OwnSocket&) = delete;

    int descriptor() const { return m_descriptor; }
    int take() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};

sockaddr_in socketAddress4(quint32 address, quint16 port)
{
    sockaddr_in result = {};
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    result.sin_addr.s_addr = htonl(address);
    return result;
}

sockaddr_in6 socketAddress6(const QHostAddress& address, quint16 port)
{
    sockaddr_in6 result = {};
    result.sin6_family = AF_INET6;
    result.sin6_port = htons(port);
    const Q_IPV6ADDR bytes = address.toIPv6Address();
    std::memcpy(&result.sin6_addr, &bytes, sizeof result.sin6_addr);
    result.sin6_scope_id = static_cast<quint32>(QNetworkInterface::interfaceIndexFromName(address.scopeId()));
    return result;
}

/// 0, or the system's error: EINPROGRESS mostly.
int startConnecting(int socket, const QHostAddress& address, quint16 port)
{
    if (address.protocol() == QAbstractSocket::IPv4Protocol) {
        const sockaddr_in target = socketAddress4(address.toIPv4Address(), port);
        return ::connect(socket, reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0 ? 0 : errno;
    }
    const sockaddr_in6 target = socketAddress6(address, port);
    return ::connect(socket, reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0 ? 0 : errno;
}

int connectionError(int socket)
{
    int error = 0;
    socklen_t size = sizeof error;
    return ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

/// 0 once the socket is connected, or the system's error.
int waitForConnection(int socket, int milliseconds, const std::function<void()>& whileWaiting)
{
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        if (whileWaiting)
            whileWaiting();
        const int left = std::max(0, milliseconds - static_cast<int>(timer.elapsed()));
        pollfd entry{socket, POLLOUT, 0};
        if (::poll(&entry, 1, std::min(left, connectSliceMs)) > 0)
            return connectionError(socket);
        if (left == 0)
            return ETIMEDOUT;
    }
}

} // namespace

TcpConnection connectTcp(
    const QString& host, quint16 port, int milliseconds, const std::function<void()>& whileWaiting)
{
    const QHostInfo info = QHostInfo::fromName(host);
    QElapsedTimer timer;
    timer.start();
    TcpConnection result{-1, info.errorString()};
    for (const QHostAddress& address : info.addresses()) {
        OwnSocket socket(address.protocol() == QAbstractSocket::IPv4Protocol ? AF_INET : AF_INET6);
        int error = socket.descriptor() < 0 ? errno : startConnecting(socket.descriptor(), address, port);
        const int left = std::max(0, milliseconds - static_cast<int>(timer.elapsed()));
        if (error == EINPROGRESS || error == EINTR)
            error = waitForConnection(socket.descriptor(), left, whileWaiting);
        if (error == 0)
            return {socket.take(), {}};
        result.error = qt_error_string(error);
    }
    return result;
}

} // namespace devices
