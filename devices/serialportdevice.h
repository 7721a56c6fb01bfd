#pragma once

#include "streamdevice.h"

#include <QSerialPort>

namespace devices {

/// A serial line of this machine: a tty, a USB line or a pseudo terminal.
class SerialPortDevice : public StreamDevice
{
    Q_OBJECT

public:
    /// The name is a path such as /dev/ttyS0, which may be a symbolic link, or a bare name such as ttyS0.
    explicit SerialPortDevice(const QString& name);
    ~SerialPortDevice() override;

    QString getDeviceName() const override;
    bool setBaudRate(QSerialPort::BaudRate baudRate) override;
    QSerialPort::BaudRate getBaudRate() const override;
    bool setDataBits(QSerialPort::DataBits dataBits) override;
    bool setParity(QSerialPort::Parity parity) override;
    bool setStopBits(QSerialPort::StopBits stopBits) override;
    bool setFlowControl(QSerialPort::FlowControl flowControl) override;
    QSerialPort::FlowControl getFlowControl() const override;
    /// A line without modem lines, such as a pseudo terminal, has nothing to set: that counts as done.
    bool setDataTerminalReady(bool ready) override;
    bool isDataTerminalReady() const override;

    bool isOpen() const override;
    bool open() override;
    void close() override;
    bool clear() override;
    bool isAvailable() const override;
    int getType() const override;

protected:
    QIODevice& stream() override { return m_port; }
    const QIODevice& stream() const override { return m_port; }
    bool isLineLost() const override;
    void forgetTimeout() override;
    // Straight to and from the descriptor. Qt's port asks the line before each write, wakes an event loop
    // that does not run, and reads into fresh memory: nearly half of a short frame's round trip. What fails
    // is left for it to meet again and to name.
    qint64 writeNow(const QByteArray& data) override;
    qint64 bytesReceived() const override;
    QByteArray take(qint64 maxSize) override;
    bool waitOnce(int milliseconds) override;

private:
    void forgetInput();

    /// Mutable, since asking for the state of DTR is not const there.
    mutable QSerialPort m_port;
    /// The state that was asked for last, where the line cannot tell.
    bool m_dataTerminalReady = false;
    bool m_hasModemLines = true;
    /// Received here; what an event loop made the port receive since then is behind it.
    QByteArray m_input;
    qsizetype m_taken = 0;
};

} // namespace devices
