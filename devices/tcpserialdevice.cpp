#include "tcpserialdevice.h"

#include <QNetworkProxy>

namespace devices {

namespace {
constexpr int ConnectTimeoutMs = 5000;
} // namespace

TcpSerialDevice::TcpSerialDevice(const QString& host, quint16 port)
    : m_host(host)
    , m_port(port)
{
    // A register stands in the shop's own network; a proxy of the desktop is not meant for it.
    m_socket.setProxy(QNetworkProxy::NoProxy);
}

TcpSerialDevice::~TcpSerialDevice() = default;

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

bool TcpSerialDevice::isOpen() const
{
    return m_socket.state() == QAbstractSocket::ConnectedState
        || (m_socket.isOpen() && m_socket.bytesAvailable() > 0);
}

bool TcpSerialDevice::open()
{
    if (isOpen())
        return true;
    m_socket.abort();
    m_socket.connectToHost(m_host, m_port);
    if (!m_socket.waitForConnected(ConnectTimeoutMs))
        return false;
    // A frame of a few bytes must not wait for more to travel with.
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    return true;
}

void TcpSerialDevice::close()
{
    m_socket.abort();
}

bool TcpSerialDevice::clear()
{
    if (!isOpen())
        return false;
    fetch();
    m_socket.readAll();
    return true;
}

bool TcpSerialDevice::isAvailable() const
{
    return !m_host.isEmpty() && m_port != 0;
}

bool TcpSerialDevice::isLineLost() const
{
    return m_socket.isOpen() && m_socket.state() == QAbstractSocket::UnconnectedState;
}

} // namespace devices
