#include "serialdriverwrapper.h"

#include "abstractserialdevice.h"
#include "drivertexts.h"
#include "exceptions.h"

#include <unistd.h>

namespace {

void require(bool done, const QString& refusal)
{
    if (!done)
        throw ComDriverException(refusal);
}

} // namespace

SerialDriverWrapper::SerialDriverWrapper(hw::AbstractSerialDevice* serialDevice)
    : m_device(serialDevice)
{
}

SerialDriverWrapper::~SerialDriverWrapper() = default;

bool SerialDriverWrapper::portOpen(QSerialPort::BaudRate baudRate, QSerialPort::Parity parity,
    QSerialPort::DataBits dataBits, QSerialPort::StopBits stopBits)
{
    portOpen();
    return configure(baudRate, parity, dataBits, stopBits);
}

bool SerialDriverWrapper::portOpen()
{
    require(m_device != nullptr, QStringLiteral("Ошибка доступа к порту"));
    require(m_device->open(), drivertexts::cannotOpenPort());
    return m_device->setOpened(true);
}

void SerialDriverWrapper::portClose()
{
    if (!isOpen())
        return;
    m_device->close();
    m_device->setOpened(false);
}

bool SerialDriverWrapper::configure(QSerialPort::BaudRate baudRate, QSerialPort::Parity parity,
    QSerialPort::DataBits dataBits, QSerialPort::StopBits stopBits)
{
    checkOpen();
    const bool baudRateDone = m_device->setBaudRate(baudRate);
    const bool parityDone = m_device->setParity(parity);
    const bool dataBitsDone = m_device->setDataBits(dataBits);
    const bool stopBitsDone = m_device->setStopBits(stopBits);
    require(baudRateDone && parityDone && dataBitsDone && stopBitsDone,
        QStringLiteral("Ошибка конфигурирования порта"));
    return true;
}

bool SerialDriverWrapper::setBaudRate(QSerialPort::BaudRate baudRate)
{
    checkOpen();
    require(m_device->setBaudRate(baudRate), QStringLiteral("Ошибка установки скорости порта"));
    return true;
}

QSerialPort::BaudRate SerialDriverWrapper::getBaudRate() const
{
    return m_device->getBaudRate();
}

bool SerialDriverWrapper::portClear()
{
    checkOpen();
    return m_device->clear();
}

void SerialDriverWrapper::sendByte(unsigned char byte)
{
    sendData(QByteArray(1, static_cast<char>(byte)));
}

void SerialDriverWrapper::sendByteWithTimeout(unsigned char byte, unsigned long microseconds)
{
    sendByte(byte);
    usleep(static_cast<useconds_t>(microseconds));
}

void SerialDriverWrapper::sendData(const std::vector<unsigned char>& data)
{
    sendData(stdVectorToByteArray(data));
}

void SerialDriverWrapper::sendData(const QByteArray& data)
{
    checkOpen();
    // The count is not looked at: a write that got lost shows as an answer that does not come.
    m_device->write(data);
}

unsigned char SerialDriverWrapper::receiveByte(unsigned long timeout)
{
    return static_cast<unsigned char>(receivePortion(1, timeout).at(0));
}

std::vector<unsigned char> SerialDriverWrapper::receiveData(unsigned long maxSize, unsigned long timeout)
{
    return byteArrayToStdVector(receivePortion(maxSize, timeout));
}

QByteArray SerialDriverWrapper::receiveDataAsByteArray(unsigned long maxSize, unsigned long timeout)
{
    return receivePortion(maxSize, timeout);
}

QByteArray SerialDriverWrapper::receivePortion(unsigned long maxSize, unsigned long timeout)
{
    checkOpen();
    if (!m_device->waitForReadyRead(static_cast<int>(timeout)))
        throw ComDriverTimeoutException(QStringLiteral("Нет данных"));
    QByteArray portion = m_device->read(static_cast<qint64>(maxSize));
    require(!portion.isEmpty(), QStringLiteral("Невозможно получить данные"));
    return portion;
}

void SerialDriverWrapper::flush()
{
    if (isOpen())
        m_device->flush();
}

int SerialDriverWrapper::getType() const
{
    return m_device == nullptr ? 0 : m_device->getType();
}

hw::AbstractSerialDevice* SerialDriverWrapper::getDevice()
{
    return m_device;
}

QString SerialDriverWrapper::getDeviceName() const
{
    return m_device->getDeviceName();
}

bool SerialDriverWrapper::isAvailable() const
{
    return m_device->isAvailable();
}

bool SerialDriverWrapper::setFlowControl(QSerialPort::FlowControl flowControl)
{
    checkOpen();
    require(m_device->setFlowControl(flowControl), QStringLiteral("Ошибка установки управления потоком"));
    return true;
}

QSerialPort::FlowControl SerialDriverWrapper::getFlowControl() const
{
    return m_device->getFlowControl();
}

bool SerialDriverWrapper::setDataTerminalReady(bool ready)
{
    checkOpen();
    require(
        m_device->setDataTerminalReady(ready), QStringLiteral("Ошибка установки готовности к приему данных"));
    return true;
}

bool SerialDriverWrapper::isDataTerminalReady() const
{
    return m_device->isDataTerminalReady();
}

QByteArray SerialDriverWrapper::stdVectorToByteArray(const std::vector<unsigned char>& data)
{
    return QByteArray(reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size()));
}

std::vector<unsigned char> SerialDriverWrapper::byteArrayToStdVector(const QByteArray& data)
{
    return {data.begin(), data.end()};
}

bool SerialDriverWrapper::isOpen() const
{
    return m_device != nullptr && m_device->isOpen();
}

void SerialDriverWrapper::checkOpen() const
{
    require(isOpen(), QStringLiteral("Порт не открыт"));
}
