#include "keptconnection.h"

#include "loopback.h"

#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

KeptConnection::KeptConnection(quint16 port)
    : m_socket(connectionTo(port))
{
}

KeptConnection::~KeptConnection()
{
    ::close(m_socket);
}

void KeptConnection::sell(const QString& registerName, const QByteArray& id, const QByteArray& receipt)
{
    send("POST /v1/registers/" + registerName.toUtf8()
        + "/documents HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\nIdempotency-Key: " + id
        + "\r\nPrefer: wait=60\r\nContent-Length: " + QByteArray::number(receipt.size()) + "\r\n\r\n"
        + receipt);
    const auto [status, body] = receive();
    constexpr int created = 201;
    if (status != created)
        throw std::runtime_error("not issued: " + std::to_string(status) + " " + body.toStdString());
}

void KeptConnection::send(const QByteArray& bytes) const
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(
            m_socket, bytes.constData() + sent, static_cast<size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0)
            throw std::runtime_error("the service has hung up");
        sent += count;
    }
}

std::pair<int, QByteArray> KeptConnection::receive()
{
    while (!m_received.contains("\r\n\r\n"))
        receiveMore();
    const qsizetype headSize = m_received.indexOf("\r\n\r\n") + 4;
    const QByteArray head = m_received.left(headSize).toLower();
    const QByteArray name = "\r\ncontent-length:";
    const qsizetype place = head.indexOf(name);
    if (place < 0)
        throw std::runtime_error("an answer without its length");
    const qsizetype from = place + name.size();
    const qsizetype size = head.mid(from, head.indexOf('\r', from) - from).trimmed().toLongLong();
    while (m_received.size() < headSize + size)
        receiveMore();
    const QByteArray body = m_received.mid(headSize, size);
    m_received.remove(0, headSize + size);
    return {head.mid(head.indexOf(' ') + 1, 3).toInt(), body};
}

void KeptConnection::receiveMore()
{
    char bytes[1 << 14];
    const ssize_t count = ::recv(m_socket, bytes, sizeof bytes, 0);
    if (count <= 0)
        throw std::runtime_error("the service has hung up");
    m_received.append(bytes, count);
}
