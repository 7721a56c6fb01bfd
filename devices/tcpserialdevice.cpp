#include "tcpserialdevice.h"

#include "tcpconnection.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace devices {

namespace {
constexpr int connectTimeoutMs = 5000;

/// Whether the system forgets what the register has not taken when the connection ends, also with its
/// program. Else it sends that again for minutes: a receipt that was broken off would be printed after the
/// register was asked for it.
void setForgetful(int socket, bool isForgetful)
{
    const linger value{isForgetful ? 1 : 0, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &value, sizeof value);
}

bool hasTakenAll(int socket)
{
    int left = 0;
    return ::ioctl(socket, SIOCOUTQ, &left) == 0 && left == 0;
}
} // namespace

TcpSerialDevice::TcpSerialDevice(const QString& host, quint16 port)
    : m_host(host)
    , m_port(port)
{
}

TcpSerialDevice::~TcpSerialDevice()
{
    TcpSerialDevice::closeLine();
}

void TcpSerialDevice::closeLine()
{
    const int socket = static_cast<int>(m_socket.socketDescriptor());
    if (socket >= 0 && m_socket.bytesToWrite() == 0 && hasTakenAll(socket))
        setForgetful(socket, false);
    m_socket.abort();
}

QString TcpSerialDevice::getDeviceName() const
{
    return QStringLiteral("tcp:%1:%2").arg(m_host).arg(m_port);
}

bool TcpSerialDevice::setBaudRate(QSerialPort::BaudRate baudRate)
{
    m_baudRate = baudRate;
    return true;
}

bool TcpSerialDevice::setFlowControl(QSerialPort::FlowControl flowControl)
{
    m_flowControl = flowControl;
    return true;
}

bool TcpSerialDevice::setDataTerminalReady(bool ready)
{
    m_dataTerminalReady = ready;
    return true;
}

bool TcpSerialDevice::isLineOpen() const
{
    return m_socket.state() == QAbstractSocket::ConnectedState || m_socket.bytesAvailable() > 0;
}

bool TcpSerialDevice::open()
{
    if (isBudgetSpent())
        return false;
    if (isOpen())
        return true;
    tellOpening();
    m_socket.abort();
    // Qt's own connecting cannot be waited for in slices, and would go through a proxy of the desktop, which
    // is not meant for a register in the shop's own network.
    const TcpConnection connection
        = connectTcp(m_host, m_port, withinBudget(connectTimeoutMs), [this] { callWhileWaiting(); });
    m_error = connection.error;
    if (connection.socket < 0)
        return false;
    if (!m_socket.setSocketDescriptor(connection.socket)) {
        ::close(connection.socket);
        return false;
    }
    setForgetful(connection.socket, true);
    // A frame of a few bytes must not wait for more to travel with.
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    tellOpened();
    return true;
}

bool TcpSerialDevice::isAvailable() const
{
    return !m_host.isEmpty() && m_port != 0;
}

bool TcpSerialDevice::clearLine()
{
    // The system's bytes come to the socket with a look at the line.
    m_socket.waitForReadyRead(0);
    m_socket.readAll();
    return true;
}

bool TcpSerialDevice::flush()
{
    QDeadlineTimer left(withinBudget(writeTimeoutMs));
    while (m_socket.bytesToWrite() > 0) {
        if (!m_socket.waitForBytesWritten(static_cast<int>(left.remainingTime())))
            return false;
    }
    pollfd entry{static_cast<int>(m_socket.socketDescriptor()), 0, 0};
    // Nobody tells when the last of it is taken; the end of the line comes at once.
    constexpr int lookAgainMs = 1;
    while (!hasTakenAll(entry.fd)) {
        // A signal ends the wait, and not the line.
        if (entry.fd < 0 || left.hasExpired() || ::poll(&entry, 1, lookAgainMs) > 0)
            return false;
    }
    return isOpen();
}

qint64 TcpSerialDevice::send(const QByteArray& data, int milliseconds)
{
    if (sendNow(data) == data.size())
        return data.size();
    QElapsedTimer timer;
    timer.start();
    const auto left = [&] { return std::max(0, milliseconds - static_cast<int>(timer.elapsed())); };
    while (m_socket.bytesToWrite() > 0 && m_socket.waitForBytesWritten(left()))
        ;
    if (m_socket.state() == QAbstractSocket::ConnectedState)
        // What an earlier write left counts, too.
        return std::max<qint64>(0, data.size() - m_socket.bytesToWrite());
    // What came before the end can still be read.
    return isLineOpen() ? 0 : lineIsGone;
}

/// Past Qt, which would wait for the line first and keep a copy; what the line does not take at once is left
/// to it.
qint64 TcpSerialDevice::sendNow(const QByteArray& data)
{
    ssize_t sent = 0;
    if (m_socket.state() == QAbstractSocket::ConnectedState && m_socket.bytesToWrite() == 0)
        sent = ::send(static_cast<int>(m_socket.socketDescriptor()), data.constData(),
            static_cast<size_t>(data.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    sent = std::max<ssize_t>(0, sent);
    if (sent < data.size())
        m_socket.write(data.sliced(sent));
    return sent;
}

qint64 TcpSerialDevice::receive(char* data, qint64 maxSize, int milliseconds)
{
    if (m_socket.bytesAvailable() == 0) {
        if (const qint64 size = receiveNow(data, maxSize, milliseconds))
            return std::max<qint64>(0, size);
        // It is Qt's to find out how the line has ended.
        m_socket.waitForReadyRead(0);
    }
    if (m_socket.bytesAvailable() > 0)
        return m_socket.read(data, maxSize);
    return isLineOpen() ? 0 : lineIsGone;
}

/// Past Qt, which asks the system several times for each portion. Negative when none comes in time, 0 when
/// there is something other than bytes.
qint64 TcpSerialDevice::receiveNow(char* data, qint64 maxSize, int milliseconds)
{
    if (m_socket.state() != QAbstractSocket::ConnectedState)
        return 0;
    pollfd entry{static_cast<int>(m_socket.socketDescriptor()), POLLIN, 0};
    if (::poll(&entry, 1, milliseconds) <= 0)
        return -1;
    return std::max<ssize_t>(0, ::recv(entry.fd, data, static_cast<size_t>(maxSize), MSG_DONTWAIT));
}

} // namespace devices
