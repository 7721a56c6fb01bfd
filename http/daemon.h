#pragma once

#include "http/connection.h"
#include "http/tlsidentity.h"

#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <unordered_map>
#include <vector>

#include <sys/socket.h>

namespace http {

/// libmicrohttpd in Qt's event loop: it runs when its descriptor or its time-out says so.
class Daemon
{
public:
    /// Takes the socket; with an identity it speaks TLS. Throws ListenError.
    Daemon(const Site& site, const Limits& limits, int listening,
        const std::shared_ptr<const TlsIdentity>& identity);
    ~Daemon();
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    /// For a daemon that has one.
    void setIdentity(const std::shared_ptr<const TlsIdentity>& identity);
    Counters counters() const;

private:
    void start(int listening);
    void run();
    void runLibrary();
    void sweep();
    void enter(MHD_Connection* connection, void** context);
    void leave(MHD_Connection* connection);

    static MHD_Result accept(void* self, const sockaddr* address, socklen_t size);
    static void notify(
        void* self, MHD_Connection* connection, void** context, MHD_ConnectionNotificationCode code);
    static void* begin(void* self, const char* target, MHD_Connection* connection);
    static MHD_Result handle(void* self, MHD_Connection* connection, const char* url, const char* method,
        const char* version, const char* bytes, size_t* size, void** context);
    static void complete(
        void* self, MHD_Connection* connection, void** context, MHD_RequestTerminationCode code);

    ServerState m_state;
    /// The last one is shown. Handshakes under way hold on to earlier ones, without saying for how long.
    std::vector<std::shared_ptr<const TlsIdentity>> m_identities;
    std::unordered_map<MHD_Connection*, std::unique_ptr<Connection>> m_connections;
    MHD_Daemon* m_daemon = nullptr;
    bool m_isRunning = false;
    bool m_isWoken = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_timeout;
    QTimer m_sweeper;
};

} // namespace http
