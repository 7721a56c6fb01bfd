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
/// stays silent, ComDriverException for all other trouble with the port, above all a port that is not open.
/// Results of type bool are true, or the device's answer where that is said. Time-outs are milliseconds.
class FRHOST_EXPORT AbstractSerialDriver
{
public:
    virtual ~AbstractSerialDriver();

    /// Opens and sets the line up. All four settings are made, also when one is refused.
    virtual bool portOpen(QSerialPort::BaudRate baudRate, QSerialPort::Parity parity,
        QSerialPort::DataBits dataBits, QSerialPort::StopBits stopBits)
        = 0;
    /// Opens with the present settings; the result is the device's answer to setOpened.
    virtual bool portOpen() = 0;
    /// Never throws; does nothing on a closed port.
    virtual void portClose() = 0;
    virtual bool setBaudRate(QSerialPort::BaudRate baudRate) = 0;
    virtual QSerialPort::BaudRate getBaudRate() const = 0;
    /// Discards what stands in the port's buffers; the result is the device's.
    virtual bool portClear() = 0;
    /// One write of that byte.
    virtual void sendByte(unsigned char byte) = 0;
    /// Sends the byte and then pauses for that many microseconds: a pause behind the byte, not a time-out.
    virtual void sendByteWithTimeout(unsigned char byte, unsigned long microseconds) = 0;
    /// One write of all the bytes, also of none. A write that fails does not throw: it shows as an answer
    /// that does not come.
    virtual void sendData(const std::vector<unsigned char>& data) = 0;
    virtual void sendData(const QByteArray& data) = 0;
    /// Waits for one byte.
    virtual unsigned char receiveByte(unsigned long timeout) = 0;
    /// One wait and one read: the first portion that arrives, 1 to maxSize bytes. It does not collect maxSize
    /// bytes; assembling an answer is the protocol's work.
    virtual std::vector<unsigned char> receiveData(unsigned long maxSize, unsigned long timeout) = 0;
    virtual QByteArray receiveDataAsByteArray(unsigned long maxSize, unsigned long timeout) = 0;
    /// Never throws; does nothing on a closed port.
    virtual void flush() = 0;
    /// Kind of the device: hw::AbstractSerialDevice::Type; 0 without a device.
    virtual int getType() const = 0;
    /// The host's device, null without one. It stays the host's.
    virtual hw::AbstractSerialDevice* getDevice() = 0;
    virtual QString getDeviceName() const = 0;
    virtual bool isAvailable() const = 0;
    virtual bool setFlowControl(QSerialPort::FlowControl flowControl) = 0;
    virtual QSerialPort::FlowControl getFlowControl() const = 0;
    virtual bool setDataTerminalReady(bool ready) = 0;
    virtual bool isDataTerminalReady() const = 0;
};
