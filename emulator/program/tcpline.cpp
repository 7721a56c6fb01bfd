#include "program/tcpline.h"

#include <utility>

TcpLine::TcpLine(quint16 port, TcpConnections rule, QObject* parent)
    : Line(parent)
    , m_rule(rule)
{
    connect(&m_server, &QTcpServer::newConnection, this, [this] { accept(); });
    m_server.listen(QHostAddress::LocalHost, port);
}

QString TcpLine::error() const
{
    return m_server.isListening() ? QString() : m_server.errorString();
}

QString TcpLine::address() const
{
    return QStringLiteral("tcp:%1:%2").arg(m_server.serverAddress().toString()).arg(m_server.serverPort());
}

void TcpLine::accept()
{
    QTcpSocket* const host = m_server.nextPendingConnection();
    connect(host, &QTcpSocket::disconnected, this, [this, host] { leave(host); });
    if (m_rule == TcpConnections::First && hasHost())
        return host->abort();
    if (m_rule == TcpConnections::Last) {
        for (QTcpSocket* const former : std::exchange(m_hosts, {}))
            former->abort();
    }
    m_hosts.append(host);
    // Who comes beside another one is answered once it has asked.
    if (m_rule != TcpConnections::Both)
        m_host = host;
    host->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(host, &QTcpSocket::readyRead, this, [this, host] { hear(host); });
    Q_EMIT connected();
}

bool TcpLine::hasHost()
{
    // One that has just gone may not have been told of yet.
    const QList<QTcpSocket*> hosts = m_hosts;
    for (QTcpSocket* const host : hosts)
        host->waitForReadyRead(0);
    return !m_hosts.isEmpty();
}

void TcpLine::leave(QTcpSocket* host)
{
    if (m_hosts.contains(host) && host->bytesAvailable() > 0)
        return;
    m_hosts.removeOne(host);
    host->deleteLater();
}

void TcpLine::hear(QTcpSocket* host)
{
    // What one asks while another is answered waits in its connection.
    if (!m_hosts.contains(host) || (host != m_host && m_owesAnswer))
        return;
    if (host != m_host) {
        m_host = host;
        Q_EMIT changed();
    }
    m_owesAnswer = true;
    Q_EMIT received(host->readAll());
    if (host->state() == QAbstractSocket::UnconnectedState)
        leave(host);
}

void TcpLine::settle()
{
    if (!std::exchange(m_owesAnswer, false))
        return;
    for (QTcpSocket* const host : std::as_const(m_hosts)) {
        // From the event loop: it is told in the midst of an exchange.
        if (host != m_host && host->bytesAvailable() > 0)
            QMetaObject::invokeMethod(
                host, [this, host] { hear(host); }, Qt::QueuedConnection);
    }
}

void TcpLine::write(const QByteArray& bytes)
{
    if (!m_host)
        return;
    m_host->write(bytes);
    m_host->flush();
}
