#pragma once

#include "streamdevice.h"

#include <QSerialPort>

namespace devices {

/// A serial line of this machine: a tty, a USB line or a pseudo terminal.
///
/// QSerialPort opens the line, locks it and sets it up; the bytes go straight to and from its descriptor.
/// Qt's own reading asks the line before each write, wakes an event loop that does not run, reads into fresh
/// memory (nearly half of a short frame's round trip) and does not tell in every release that a line has
/// vanished.
class SerialPortDevice : public StreamDevice
{
    Q_OBJECT

public:
    /// The name is a path such as /dev/ttyS0, which may be a symbolic link, or a bare name such as ttyS0.
    explicit SerialPortDevice(const QString& name);
    ~SerialPortDevice() override;

    QString errorString() const override { return m_error; }
    quint64 soleConnection() const override { return m_port.isOpen() ? m_soleConnection : 0; }
    std::optional<LineErrors> lineErrors() const override;
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

    bool open() override;
    bool isAvailable() const override;
    int getType() const override;

protected:
    bool isLineOpen() const override { return m_port.isOpen(); }
    void closeLine() override;
    bool clearLine() override { return m_port.clear(); }
    qint64 send(const QByteArray& data, int milliseconds) override;
    qint64 receive(char* data, qint64 maxSize, int milliseconds) override;

private:
    /// What the system takes at once, or lineIsGone.
    qint64 writeNow(const char* data, qint64 size);
    short waitFor(short events, int milliseconds) const;
    qint64 fail(int error);
    /// As the system counts them, from its start.
    std::optional<LineErrors> countedErrors() const;
    /// A setting fails on a line that is gone, and then the line is closed as after a failed write.
    bool settle(bool done);

    /// Mutable, since asking for the state of DTR is not const there.
    mutable QSerialPort m_port;
    QString m_error;
    /// The state that was asked for last, where the line cannot tell.
    bool m_dataTerminalReady = false;
    bool m_hasModemLines = true;
    quint64 m_connections = 0;
    quint64 m_soleConnection = 0;
    std::optional<LineErrors> m_errorsAtOpening;
    /// Of a line that is closed, when it was.
    std::optional<LineErrors> m_errorsAtClosing;
};

} // namespace devices
