#include "line.h"

#include "serialdevicefactory.h"

#include <arpa/inet.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

Line::Line(const std::string& kind)
{
    kind == "pty" ? makePty() : makeTcp();
}

Line::~Line()
{
    hangUp();
}

void Line::makePty()
{
    int slave = -1;
    char name[64] = {};
    openpty(&m_peer, &slave, name, nullptr, nullptr);
    m_device = devices::createSerialDevice(QString::fromLatin1(name));
    m_device->open();
    close(slave);
}

void Line::makeTcp()
{
    const int server = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    bind(server, reinterpret_cast<sockaddr*>(&address), length);
    listen(server, 1);
    getsockname(server, reinterpret_cast<sockaddr*>(&address), &length);
    m_device = devices::createSerialDevice(QStringLiteral("tcp:127.0.0.1:%1").arg(ntohs(address.sin_port)));
    m_device->open();
    m_peer = accept(server, nullptr, nullptr);
    close(server);
}

void Line::send(const QByteArray& data) const
{
    if (::write(m_peer, data.constData(), static_cast<size_t>(data.size())) != data.size())
        qFatal("The far end cannot write");
}

QByteArray Line::received(int milliseconds) const
{
    pollfd entry{m_peer, POLLIN, 0};
    if (poll(&entry, 1, milliseconds) <= 0)
        return {};
    QByteArray buffer(1 << 16, '\0');
    buffer.resize(std::max<qsizetype>(0, ::read(m_peer, buffer.data(), static_cast<size_t>(buffer.size()))));
    return buffer;
}

void Line::hangUp()
{
    if (m_peer >= 0)
        close(m_peer);
    m_peer = -1;
}
