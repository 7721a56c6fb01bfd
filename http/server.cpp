#include "http/server.h"

#include "http/daemon.h"
#include "http/listensocket.h"

namespace http {

Server::Server(const Site& site, const Limits& limits, QObject* parent)
    : QObject(parent)
    , m_site(site)
    , m_limits(limits)
{
}

Server::~Server() = default;

void Server::listen(const QString& address, quint16 port)
{
    close();
    listensocket::prepareProcess(m_limits.connections);
    const int socket = listensocket::open(address, port);
    m_port = listensocket::portOf(socket);
    m_address = address;
    m_daemon = std::make_unique<Daemon>(m_site, m_limits, socket, m_identity);
}

void Server::setIdentity(std::shared_ptr<const TlsIdentity> identity)
{
    m_identity = std::move(identity);
    if (m_daemon)
        m_daemon->setIdentity(m_identity);
}

void Server::close()
{
    m_daemon.reset();
}

quint16 Server::port() const
{
    return m_daemon ? m_port : 0;
}

QString Server::url() const
{
    const bool isSix = m_address.contains(QLatin1Char(':'));
    return (isSix ? QStringLiteral("%1://[%2]:%3") : QStringLiteral("%1://%2:%3"))
        .arg(m_identity ? QStringLiteral("https") : QStringLiteral("http"), m_address)
        .arg(port());
}

Counters Server::counters() const
{
    return m_daemon ? m_daemon->counters() : Counters();
}

} // namespace http
