#pragma once

#include "http/counters.h"
#include "http/limits.h"
#include "http/site.h"
#include "http/tlsidentity.h"

#include <QObject>

#include <memory>

namespace http {

class Daemon;

/// Serves a site in the event loop of the thread it lives in; it has no thread of its own.
class Server : public QObject
{
public:
    /// The site has to outlive the server.
    explicit Server(const Site& site, const Limits& limits = {}, QObject* parent = nullptr);
    ~Server() override;

    /// At an address of this machine in digits, IPv4 or IPv6; port 0 takes a free one. Throws ListenError.
    /// Raises the process's limit of descriptors, and has its large blocks of memory given back at once.
    void listen(const QString& address = QStringLiteral("127.0.0.1"), quint16 port = 0);
    /// From the next listen on with TLS (1.2 and 1.3), and with no plain HTTP there; also while it listens
    /// so, for connections that are new then. Those under way go on as they are.
    void setIdentity(std::shared_ptr<const TlsIdentity> identity);
    /// Lets all clients go.
    void close();
    /// 0 when it does not listen.
    quint16 port() const;
    /// Such as "http://127.0.0.1:8080", or "https://..." with an identity.
    QString url() const;
    Counters counters() const;

private:
    const Site& m_site;
    Limits m_limits;
    QString m_address;
    quint16 m_port = 0;
    std::shared_ptr<const TlsIdentity> m_identity;
    std::unique_ptr<Daemon> m_daemon;
};

} // namespace http
