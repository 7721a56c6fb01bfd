#pragma once

#include "abstractserialdevice.h"
#include "line/protocol.h"
#include "register/virtualclock.h"

#include <QObject>

namespace frctl {

/// The line to a software register in this process, in virtual time: a wait moves the clock to the next byte
/// or to its own end, and nothing ever waits really.
class EmulatedLine : public QObject, public hw::AbstractSerialDevice
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractSerialDevice)

public:
    EmulatedLine(emulator::VirtualClock& clock, emulator::Outbox& outbox, emulator::Protocol& protocol);

    QString getDeviceName() const override { return QStringLiteral("preview"); }
    bool setBaudRate(QSerialPort::BaudRate) override { return m_open; }
    QSerialPort::BaudRate getBaudRate() const override { return QSerialPort::Baud115200; }
    bool setDataBits(QSerialPort::DataBits) override { return m_open; }
    bool setParity(QSerialPort::Parity) override { return m_open; }
    bool setStopBits(QSerialPort::StopBits) override { return m_open; }
    bool setFlowControl(QSerialPort::FlowControl) override { return m_open; }
    QSerialPort::FlowControl getFlowControl() const override { return QSerialPort::NoFlowControl; }
    bool setDataTerminalReady(bool) override { return m_open; }
    bool isDataTerminalReady() const override { return false; }
    bool isOpen() const override { return m_open; }
    bool setOpened(bool) override { return true; }
    bool open() override { return m_open = true; }
    void close() override { m_open = false; }
    qint64 write(const QByteArray& data) override;
    QByteArray read(qint64 maxSize) override;
    bool flush() override { return m_open; }
    bool clear() override;
    bool waitForReadyRead(int milliseconds) override;
    bool isAvailable() const override { return true; }
    int getType() const override { return Virtual; }

private:
    emulator::VirtualClock& m_clock;
    emulator::Outbox& m_outbox;
    emulator::Protocol& m_protocol;
    QByteArray m_input;
    bool m_open = false;
};

} // namespace frctl
