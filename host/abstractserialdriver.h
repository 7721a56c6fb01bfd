#pragma once

#include "frhost_export.h"

#include <QByteArray>
#include <QSerialPort>
#include <QString>

#include <vector>

namespace hw {
class AbstractSerialDevice;
}

/// The byte transport of the drivers. Failures are exceptions: ComDriverTimeoutException when the device
/// stays silent, ComDriverException for all other trouble with the port. Time-outs are milliseconds.
class FRHOST_EXPORT AbstractSerialDriver
{
public:
    virtual ~AbstractSerialDriver();

    virtual bool portOpen(QSerialPort::BaudRate baudRate, QSerialPort::Parity parity,
        QSerialPort::DataBits dataBits, QSerialPort::StopBits stopBits)
        = 0;
    virtual bool portOpen() = 0;
    virtual void portClose() = 0;
    virtual bool setBaudRate(QSerialPort::BaudRate baudRate) = 0;
    virtual QSerialPort::BaudRate getBaudRate() const = 0;
    /// Discards what stands in the port's buffers.
    virtual bool portClear() = 0;
    virtual void sendByte(unsigned char byte) = 0;
    /// Sends the byte and then pauses for that many microseconds: a pause behind the byte, not a time-out.
    virtual void sendByteWithTimeout(unsigned char byte, unsigned long microseconds) = 0;
    virtual void sendData(const std::vector<unsigned char>& data) = 0;
    virtual void sendData(const QByteArray& data) = 0;
    virtual unsigned char receiveByte(unsigned long timeout) = 0;
    /// One wait and one read: the first portion that arrives, 1 to maxSize bytes. It does not collect maxSize
    /// bytes; assembling an answer is the protocol's work.
    virtual std::vector<unsigned char> receiveData(unsigned long maxSize, unsigned long timeout) = 0;
    virtual QByteArray receiveDataAsByteArray(unsigned long maxSize, unsigned long timeout) = 0;
    virtual void flush() = 0;
    /// Kind of the device: hw::AbstractSerialDevice::Type; 0 without a device.
    virtual int getType() const = 0;
    virtual hw::AbstractSerialDevice* getDevice() = 0;
    virtual QString getDeviceName() const = 0;
    virtual bool isAvailable() const = 0;
    virtual bool setFlowControl(QSerialPort::FlowControl flowControl) = 0;
    virtual QSerialPort::FlowControl getFlowControl() const = 0;
    virtual bool setDataTerminalReady(bool ready) = 0;
    virtual bool isDataTerminalReady() const = 0;
};
