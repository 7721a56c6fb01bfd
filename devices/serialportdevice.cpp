#include "serialportdevice.h"

#include "portname.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSocketNotifier>

#include <linux/serial.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace devices {

Q_LOGGING_CATEGORY(lcSerialPort, "frdevices.serialport", QtWarningMsg)

namespace {

constexpr short hangUpEvents = POLLHUP | POLLERR | POLLNVAL;

bool isForLater(int error)
{
    return error == EAGAIN || error == EINTR;
}

} // namespace

SerialPortDevice::SerialPortDevice(const QString& name)
{
    m_port.setPortName(devicePath(name));
}

SerialPortDevice::~SerialPortDevice() = default;

QString SerialPortDevice::getDeviceName() const
{
    return m_port.portName();
}

bool SerialPortDevice::setBaudRate(QSerialPort::BaudRate baudRate)
{
    return settle(m_port.setBaudRate(baudRate));
}

QSerialPort::BaudRate SerialPortDevice::getBaudRate() const
{
    return static_cast<QSerialPort::BaudRate>(m_port.baudRate());
}

bool SerialPortDevice::setDataBits(QSerialPort::DataBits dataBits)
{
    return settle(m_port.setDataBits(dataBits));
}

bool SerialPortDevice::setParity(QSerialPort::Parity parity)
{
    return settle(m_port.setParity(parity));
}

bool SerialPortDevice::setStopBits(QSerialPort::StopBits stopBits)
{
    return settle(m_port.setStopBits(stopBits));
}

bool SerialPortDevice::setFlowControl(QSerialPort::FlowControl flowControl)
{
    return settle(m_port.setFlowControl(flowControl));
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
    return settle(!m_hasModemLines);
}

bool SerialPortDevice::isDataTerminalReady() const
{
    if (!isOpen() || !m_hasModemLines)
        return m_dataTerminalReady;
    return m_port.isDataTerminalReady();
}

bool SerialPortDevice::open()
{
    if (isBudgetSpent())
        return false;
    if (isLineOpen() && (waitFor(0, 0) & hangUpEvents) == 0)
        return true;
    tellOpening();
    close();
    m_port.clearError();
    m_hasModemLines = true;
    const bool opened = m_port.open(QIODevice::ReadWrite);
    m_error = opened ? QString() : m_port.errorString();
    ++m_connections;
    m_soleConnection = opened && ::ioctl(m_port.handle(), TIOCEXCL) == 0 ? m_connections : 0;
    // Or an event loop of the host would make the port receive bytes that nobody looks for there.
    for (QSocketNotifier* notifier : m_port.findChildren<QSocketNotifier*>())
        notifier->setEnabled(false);
    m_errorsAtOpening = countedErrors();
    if (opened)
        tellOpened();
    return opened;
}

void SerialPortDevice::closeLine()
{
    if (!isLineOpen())
        return;
    m_errorsAtClosing = countedErrors();
    m_port.close();
}

std::optional<LineErrors> SerialPortDevice::countedErrors() const
{
    serial_icounter_struct counts = {};
    if (!m_port.isOpen() || ::ioctl(m_port.handle(), TIOCGICOUNT, &counts) != 0)
        return std::nullopt;
    return LineErrors{counts.frame, counts.parity};
}

std::optional<LineErrors> SerialPortDevice::lineErrors() const
{
    const std::optional<LineErrors> now = m_port.isOpen() ? countedErrors() : m_errorsAtClosing;
    if (!now || !m_errorsAtOpening)
        return std::nullopt;
    return LineErrors{now->framing - m_errorsAtOpening->framing, now->parity - m_errorsAtOpening->parity};
}

bool SerialPortDevice::isAvailable() const
{
    return QFileInfo::exists(devicePath(m_port.portName()));
}

int SerialPortDevice::getType() const
{
    // A USB modem line (ACM) has no real speed, but takes one; for drivers it is a line like the others.
    return m_port.portName().contains(QStringLiteral("ttyACM")) ? Usb : Com;
}

qint64 SerialPortDevice::send(const QByteArray& data, int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    for (qint64 sent = 0;;) {
        const qint64 portion = writeNow(data.constData() + sent, data.size() - sent);
        if (portion == lineIsGone)
            return lineIsGone;
        sent += portion;
        if (sent == data.size())
            return sent;
        const qint64 left = milliseconds - timer.elapsed();
        if (left <= 0) {
            fail(ETIMEDOUT);
            return sent;
        }
        waitFor(POLLOUT, static_cast<int>(left));
    }
}

qint64 SerialPortDevice::writeNow(const char* data, qint64 size)
{
    const ssize_t written = ::write(m_port.handle(), data, static_cast<size_t>(size));
    if (written < 0 && !isForLater(errno))
        return fail(errno);
    return std::max<ssize_t>(0, written);
}

qint64 SerialPortDevice::receive(char* data, qint64 maxSize, int milliseconds)
{
    const short events = waitFor(POLLIN, milliseconds);
    if ((events & POLLIN) == 0)
        return (events & hangUpEvents) == 0 ? 0 : fail(EIO);
    const ssize_t size = ::read(m_port.handle(), data, static_cast<size_t>(maxSize));
    if (size > 0)
        return size;
    if (size < 0 && isForLater(errno))
        return 0;
    // The line is readable and gives nothing: it ends here.
    return fail(size < 0 ? errno : EIO);
}

short SerialPortDevice::waitFor(short events, int milliseconds) const
{
    pollfd entry{m_port.handle(), events, 0};
    return ::poll(&entry, 1, milliseconds) > 0 ? entry.revents : short{0};
}

qint64 SerialPortDevice::fail(int error)
{
    m_error = qt_error_string(error);
    return lineIsGone;
}

bool SerialPortDevice::settle(bool done)
{
    if (!done && isLineOpen() && (waitFor(0, 0) & hangUpEvents) != 0) {
        fail(EIO);
        dropLine();
    }
    return done;
}

} // namespace devices
