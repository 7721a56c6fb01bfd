#pragma once

#include "line/protocol.h"
#include "memorydevice.h"
#include "register/virtualclock.h"

#include <QObject>

namespace preview {

/// The line to a software register in this process, in virtual time: a wait moves the clock to the next byte
/// or to its own end, and nothing ever waits really.
class EmulatedLine : public QObject, public devices::MemoryDevice
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractSerialDevice)

public:
    EmulatedLine(emulator::VirtualClock& clock, emulator::Outbox& outbox, emulator::Protocol& protocol);

    QString getDeviceName() const override { return QStringLiteral("preview"); }
    bool isOpen() const override { return m_open; }
    bool open() override { return m_open = true; }
    void close() override { m_open = false; }
    qint64 write(const QByteArray& data) override;
    QByteArray read(qint64 maxSize) override;
    bool clear() override;
    bool waitForReadyRead(int milliseconds) override;

private:
    emulator::VirtualClock& m_clock;
    emulator::Outbox& m_outbox;
    emulator::Protocol& m_protocol;
    QByteArray m_input;
    bool m_open = false;
};

} // namespace preview
