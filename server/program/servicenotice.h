#pragma once

#include <QByteArray>
#include <QTimer>

namespace frserver {

/// What a program tells systemd that has started it: it is ready, it is stopping, it is alive. Without
/// NOTIFY_SOCKET nobody is told.
class ServiceNotice
{
public:
    ServiceNotice();

    /// READY=1, with a line for systemctl status; from then on the watchdog is told as often as it wants to
    /// be.
    void ready(const QByteArray& status);
    void stopping();
    /// Another program is about to take the place of this one in the process: it finds what systemd has said
    /// in the environment again, and is ready in its turn.
    void leavePlace() const;

private:
    void send(const QByteArray& state) const;

    QByteArray m_socket;
    QByteArray m_watchdogTime;
    QTimer m_watchdog;
};

} // namespace frserver
