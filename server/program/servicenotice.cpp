#include "program/servicenotice.h"

#include <chrono>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace frserver {

namespace {

/// Half the time after which systemd takes the program for dead; none when it does not watch this one.
std::chrono::milliseconds watchdogInterval()
{
    const QByteArray process = qgetenv("WATCHDOG_PID");
    if (!process.isEmpty() && process.toLongLong() != ::getpid())
        return {};
    return std::chrono::milliseconds(qgetenv("WATCHDOG_USEC").toLongLong() / 2000);
}

} // namespace

ServiceNotice::ServiceNotice()
    : m_socket(qgetenv("NOTIFY_SOCKET"))
    , m_watchdogTime(qgetenv("WATCHDOG_USEC"))
{
    // Workers are not the service.
    qunsetenv("NOTIFY_SOCKET");
    m_watchdog.setInterval(watchdogInterval());
    qunsetenv("WATCHDOG_USEC");
    qunsetenv("WATCHDOG_PID");
    QObject::connect(&m_watchdog, &QTimer::timeout, &m_watchdog, [this] { send("WATCHDOG=1"); });
}

void ServiceNotice::ready(const QByteArray& status)
{
    send("READY=1\nSTATUS=" + status);
    if (m_watchdog.interval() > 0)
        m_watchdog.start();
}

void ServiceNotice::stopping()
{
    send("STOPPING=1");
}

void ServiceNotice::leavePlace() const
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const qint64 microseconds = qint64{now.tv_sec} * 1'000'000 + now.tv_nsec / 1000;
    send("RELOADING=1\nMONOTONIC_USEC=" + QByteArray::number(microseconds));
    if (!m_socket.isEmpty())
        qputenv("NOTIFY_SOCKET", m_socket);
    // Of this process, whose number stays.
    if (m_watchdog.interval() > 0)
        qputenv("WATCHDOG_USEC", m_watchdogTime);
}

void ServiceNotice::send(const QByteArray& state) const
{
    sockaddr_un address{};
    if (m_socket.isEmpty() || m_socket.size() >= static_cast<qsizetype>(sizeof(address.sun_path)))
        return;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, m_socket.constData(), static_cast<size_t>(m_socket.size()));
    // An abstract one is written with @ and begins with a zero.
    if (m_socket.startsWith('@'))
        address.sun_path[0] = '\0';
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const auto size
        = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<size_t>(m_socket.size()));
    ::sendto(socket, state.constData(), static_cast<size_t>(state.size()), MSG_NOSIGNAL,
        reinterpret_cast<const sockaddr*>(&address), size);
    ::close(socket);
}

} // namespace frserver
