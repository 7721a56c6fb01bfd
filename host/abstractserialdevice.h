#pragma once

#include "frhost_export.h"

#include <QByteArray>
#include <QObject>
#include <QSerialPort>
#include <QString>

namespace hw {

/// The serial device that a host hands to the plugin (property serialObj of the device object). All calls
/// block and come from one thread; no event loop runs while a driver works.
///
/// A host opens its device before it calls AbstractFrDriver::portOpen: the HEX driver sets flow control and
/// DTR first and opens then, and those settings are refused on a closed port. open() on an open device
/// answers true.
class FRHOST_EXPORT AbstractSerialDevice
{
public:
    /// Kinds of devices that drivers tell apart by number: 3 and 4 have no baud rate.
    enum Type { Unknown = 0, Com = 1, Usb = 2, Tcp = 3, Virtual = 4 };

    virtual ~AbstractSerialDevice();

    /// Name of the port for logs and messages.
    virtual QString getDeviceName() const = 0;
    /// Like all setters: true on success. A setting lasts over closing and opening.
    virtual bool setBaudRate(QSerialPort::BaudRate baudRate) = 0;
    virtual QSerialPort::BaudRate getBaudRate() const = 0;
    virtual bool setDataBits(QSerialPort::DataBits dataBits) = 0;
    virtual bool setParity(QSerialPort::Parity parity) = 0;
    virtual bool setStopBits(QSerialPort::StopBits stopBits) = 0;
    virtual bool setFlowControl(QSerialPort::FlowControl flowControl) = 0;
    virtual QSerialPort::FlowControl getFlowControl() const = 0;
    virtual bool setDataTerminalReady(bool ready) = 0;
    virtual bool isDataTerminalReady() const = 0;

    virtual bool isOpen() const = 0;
    /// Told true right after a successful open and false right after a close; the result is that of portOpen.
    virtual bool setOpened(bool opened) = 0;
    /// Opens with the present settings. True when the port is open afterwards, also when it was open before.
    virtual bool open() = 0;
    /// Does nothing on a closed port.
    virtual void close() = 0;
    /// Gives all bytes to the system, which sends them by itself, and waits while it takes no more; gives the
    /// number of bytes written, -1 on failure.
    virtual qint64 write(const QByteArray& data) = 0;
    /// Up to maxSize bytes that are available now, perhaps fewer, perhaps none. Does not wait.
    virtual QByteArray read(qint64 maxSize) = 0;
    /// Sees to it that what was written goes out; may wait until it has. False when it does not.
    virtual bool flush() = 0;
    /// Discards what stands in the port's buffers, in both directions.
    virtual bool clear() = 0;
    /// True as soon as there are bytes to read, at once when there are some already; false when none came
    /// within that many milliseconds.
    virtual bool waitForReadyRead(int milliseconds) = 0;
    /// True if the port exists.
    virtual bool isAvailable() const = 0;
    /// One of Type.
    virtual int getType() const = 0;
};

} // namespace hw

#define HW_ABSTRACT_SERIAL_DEVICE_IID "net.velmora.AbstractSerialDevice/4.4.5"
Q_DECLARE_INTERFACE(hw::AbstractSerialDevice, HW_ABSTRACT_SERIAL_DEVICE_IID)
