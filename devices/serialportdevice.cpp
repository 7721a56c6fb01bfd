#include "serialportdevice.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include <poll.h>
#include <unistd.h>

#include <algorithm>

namespace devices {

Q_LOGGING_CATEGORY(lcSerialPort, "frdevices.serialport", QtWarningMsg)

namespace {
constexpr qsizetype inputSize = 4096;
} // namespace

SerialPortDevice::SerialPortDevice(const QString& name)
{
    m_port.setPortName(name);
}

SerialPortDevice::~SerialPortDevice() = default;

QString SerialPortDevice::getDeviceName() const
{
    return m_port.portName();
}

bool SerialPortDevice::setBaudRate(QSerialPort::BaudRate baudRate)
{
    return m_port.setBaudRate(baudRate);
}

QSerialPort::BaudRate SerialPortDevice::getBaudRate() const
{
    return static_cast<QSerialPort::BaudRate>(m_port.baudRate());
}

bool SerialPortDevice::setDataBits(QSerialPort::DataBits dataBits)
{
    return m_port.setDataBits(dataBits);
}

bool SerialPortDevice::setParity(QSerialPort::Parity parity)
{
    return m_port.setParity(parity);
}

bool SerialPortDevice::setStopBits(QSerialPort::StopBits stopBits)
{
    return m_port.setStopBits(stopBits);
}

bool SerialPortDevice::setFlowControl(QSerialPort::FlowControl flowControl)
{
    return m_port.setFlowControl(flowControl);
}

QSerialPort::FlowControl SerialPortDevice::getFlowControl() const
{
    return m_port.flowControl();
}

bool SerialPortDevice::setDataTerminalReady(bool ready)
{
    if (!isOpen())
        return false;
    m_dataTerminalReady = ready;
    m_port.clearError();
    if (m_port.setDataTerminalReady(ready))
        return true;
    const QSerialPort::SerialPortError error = m_port.error();
    m_port.clearError();
    m_hasModemLines = error != QSerialPort::UnsupportedOperationError && error != QSerialPort::UnknownError;
    if (!m_hasModemLines)
        qCInfo(lcSerialPort).noquote() << getDeviceName() << "has no modem lines, DTR is left alone";
    return !m_hasModemLines;
}

bool SerialPortDevice::isDataTerminalReady() const
{
    if (!isOpen() || !m_hasModemLines)
        return m_dataTerminalReady;
    return m_port.isDataTerminalReady();
}

bool SerialPortDevice::isOpen() const
{
    return m_port.isOpen();
}

bool SerialPortDevice::open()
{
    if (isOpen())
        return true;
    m_port.clearError();
    m_hasModemLines = true;
    return m_port.open(QIODevice::ReadWrite);
}

void SerialPortDevice::close()
{
    forgetInput();
    if (isOpen())
        m_port.close();
}

bool SerialPortDevice::clear()
{
    forgetInput();
    return isOpen() && m_port.clear();
}

bool SerialPortDevice::isAvailable() const
{
    const QString name = m_port.portName();
    return QFileInfo::exists(name.startsWith(QLatin1Char('/')) ? name : QStringLiteral("/dev/") + name);
}

int SerialPortDevice::getType() const
{
    // A USB modem line (ACM) has no real speed, but takes one; for drivers it is a line like the others.
    return m_port.portName().contains(QStringLiteral("ttyACM")) ? Usb : Com;
}

bool SerialPortDevice::isLineLost() const
{
    if (!isOpen())
        return false;
    switch (m_port.error()) {
    case QSerialPort::ResourceError:
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
    case QSerialPort::DeviceNotFoundError:
        return true;
    default:
        return false;
    }
}

void SerialPortDevice::forgetTimeout()
{
    if (m_port.error() == QSerialPort::TimeoutError)
        m_port.clearError();
}

qint64 SerialPortDevice::writeNow(const QByteArray& data)
{
    const auto size = static_cast<size_t>(data.size());
    return std::max<qint64>(0, ::write(m_port.handle(), data.constData(), size));
}

qint64 SerialPortDevice::bytesReceived() const
{
    return m_input.size() - m_taken + m_port.bytesAvailable();
}

QByteArray SerialPortDevice::take(qint64 maxSize)
{
    if (m_taken == m_input.size())
        return m_port.read(maxSize);
    QByteArray data = m_input.mid(m_taken, maxSize);
    m_taken += data.size();
    return data;
}

bool SerialPortDevice::waitOnce(int milliseconds)
{
    pollfd entry{m_port.handle(), POLLIN, 0};
    if (m_port.bytesToWrite() == 0 && ::poll(&entry, 1, milliseconds) == 0)
        return false;
    m_input.resize(inputSize);
    m_taken = 0;
    const bool isReadable = entry.revents == POLLIN;
    m_input.resize(isReadable ? std::max<qint64>(0, ::read(entry.fd, m_input.data(), inputSize)) : 0);
    return !m_input.isEmpty() || StreamDevice::waitOnce(0);
}

void SerialPortDevice::forgetInput()
{
    m_input.clear();
    m_taken = 0;
}

} // namespace devices
