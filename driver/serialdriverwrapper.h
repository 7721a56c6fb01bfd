#pragma once

#include "abstractserialdriver.h"

namespace hw {
class AbstractSerialDevice;
}

/// The drivers' transport over the host's serial device: turns the device's false answers into exceptions,
/// but for those to clear and setOpened, which portClear and portOpen pass on.
///
/// The device belongs to the host. A missing one counts as a closed port where the port must be open, and has
/// the type 0; portOpen has a text of its own for it. The questions for name, speed, flow control, DTR and
/// availability go straight to the device, and it must be there.
class SerialDriverWrapper : public AbstractSerialDriver
{
public:
    explicit SerialDriverWrapper(hw::AbstractSerialDevice* serialDevice);
    SerialDriverWrapper(const SerialDriverWrapper&) = delete;
    SerialDriverWrapper& operator=(const SerialDriverWrapper&) = delete;
    ~SerialDriverWrapper() override;

    bool portOpen(QSerialPort::BaudRate baudRate, QSerialPort::Parity parity, QSerialPort::DataBits dataBits,
        QSerialPort::StopBits stopBits) override;
    bool portOpen() override;
    void portClose() override;
    bool setBaudRate(QSerialPort::BaudRate baudRate) override;
    QSerialPort::BaudRate getBaudRate() const override;
    bool portClear() override;
    void sendByte(unsigned char byte) override;
    void sendByteWithTimeout(unsigned char byte, unsigned long microseconds) override;
    void sendData(const std::vector<unsigned char>& data) override;
    void sendData(const QByteArray& data) override;
    unsigned char receiveByte(unsigned long timeout) override;
    std::vector<unsigned char> receiveData(unsigned long maxSize, unsigned long timeout) override;
    QByteArray receiveDataAsByteArray(unsigned long maxSize, unsigned long timeout) override;
    void flush() override;
    int getType() const override;
    hw::AbstractSerialDevice* getDevice() override;
    QString getDeviceName() const override;
    bool isAvailable() const override;
    bool setFlowControl(QSerialPort::FlowControl flowControl) override;
    QSerialPort::FlowControl getFlowControl() const override;
    bool setDataTerminalReady(bool ready) override;
    bool isDataTerminalReady() const override;

    /// Sets all four, also when one fails, so that a failed call can leave the port partly reconfigured.
    bool configure(QSerialPort::BaudRate baudRate, QSerialPort::Parity parity, QSerialPort::DataBits dataBits,
        QSerialPort::StopBits stopBits);

    static QByteArray stdVectorToByteArray(const std::vector<unsigned char>& data);
    static std::vector<unsigned char> byteArrayToStdVector(const QByteArray& data);

private:
    bool isOpen() const;
    void checkOpen() const;
    QByteArray receivePortion(unsigned long maxSize, unsigned long timeout);

    hw::AbstractSerialDevice* const m_device;
};
