#include "program/tcpline.h"

TcpLine::TcpLine(quint16 port, QObject* parent)
    : Line(parent)
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
    if (m_host)
        m_host->abort();
    m_host = m_server.nextPendingConnection();
    m_host->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    Q_EMIT connected();
    connect(m_host, &QTcpSocket::disconnected, m_host, &QObject::deleteLater);
    connect(m_host, &QTcpSocket::readyRead, this, [this, host = m_host.data()] {
        if (host == m_host)
            Q_EMIT received(host->readAll());
    });
}

void TcpLine::write(const QByteArray& bytes)
{
    if (!m_host)
        return;
    m_host->write(bytes);
    m_host->flush();
}
