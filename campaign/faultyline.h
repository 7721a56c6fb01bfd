#pragma once

#include "fault.h"
#include "line/protocol.h"
#include "memorydevice.h"
#include "movement.h"
#include "register/virtualclock.h"

#include <QMap>

#include <functional>
#include <utility>

/// The line between a driver and the software register, in virtual time: a wait moves the clock to the next
/// byte or to its end, and nothing ever waits really. Each request suffers one fault or none.
class FaultyLine : public devices::MemoryDevice
{
public:
    /// What one call of the driver did.
    struct Call
    {
        QList<QByteArray> requests;
        qint64 waited = 0;
    };

    FaultyLine(Protocol language, emulator::VirtualClock& clock, emulator::Register& device,
        emulator::Outbox& outbox, emulator::Protocol& protocol);

    /// From now on, that many requests of a thousand fail.
    void setFaults(Random* random, int permille);
    /// Lets another program act on the register; false when that cannot do it now.
    bool letNeighbourAct(FaultKind deed, emulator::Money price);
    /// What a neighbour sells that sells the same.
    void setOurSale(const sale::Movement& ours) { m_ours = ours; }
    void setHazards(const Hazards& hazards) { m_hazards = hazards; }
    /// Comes before each request, whether it reaches the register or not.
    void setVisitor(std::function<void()> visitor) { m_visitor = std::move(visitor); }
    /// Takes the register's power away and gives it back, with what it kept.
    void setPowerCut(std::function<void()> cut) { m_powerCut = std::move(cut); }
    /// Ends the host's program: from now on each of its operations throws HostKilled, as this does.
    [[noreturn]] void killHost(FaultKind kind);
    bool isHostDead() const { return m_isHostDead; }
    /// Throws HostKilled when the host's program has ended.
    void requireHost() const;
    /// The host's program is started anew; its port was closed when it ended.
    void reviveHost();
    /// The request that comes after so many others suffers this fault.
    void planFault(int requestsBefore, FaultKind kind) { m_planned[m_requestCount + requestsBefore] = kind; }
    /// Requests so far.
    int requestCount() const { return m_requestCount; }
    void setTrace(bool on) { m_trace = on; }
    void traceEvent(const char* event) const;
    /// The register has stored a document and is about to print it.
    void documentStored();
    /// The cable is in place again.
    void repair() { m_dead = false; }
    void beginCall() { m_call = {}; }
    const Call& call() const { return m_call; }
    /// Faults that happened since the last call of this, in their order.
    QList<FaultKind> takeInjected() { return std::exchange(m_injected, {}); }

    QString getDeviceName() const override { return QStringLiteral("virtual"); }
    bool setBaudRate(QSerialPort::BaudRate baudRate) override;
    QSerialPort::BaudRate getBaudRate() const override { return m_baudRate; }
    bool isOpen() const override { return m_open; }
    bool open() override;
    void close() override;
    qint64 write(const QByteArray& data) override;
    QByteArray read(qint64 maxSize) override;
    bool clear() override;
    bool waitForReadyRead(int milliseconds) override;
    int getType() const override { return Com; }

private:
    FaultKind nextFault();
    /// What a fault draws that has come.
    Random& random();
    void beginRequest(const QByteArray& request);
    void send(const QByteArray& request);
    void lose();
    void releaseHeld();
    void pump();
    void damage(QByteArray& bytes);
    QByteArray damagedRequest(QByteArray request);
    void advanceTo(qint64 time);
    void trace(const char* direction, const QByteArray& bytes) const;

    const Protocol m_language;
    emulator::VirtualClock& m_clock;
    emulator::Register& m_device;
    emulator::Outbox& m_outbox;
    emulator::Protocol& m_protocol;
    Random* m_random = nullptr;
    /// For a fault that was planned where none are drawn.
    Random m_ownRandom{0, 0};
    int m_permille = 0;
    sale::Movement m_ours;
    Hazards m_hazards;
    std::function<void()> m_visitor;
    std::function<void()> m_powerCut;
    bool m_isHostDead = false;
    /// By the number of the request, counted from 0.
    QMap<int, FaultKind> m_planned;
    int m_requestCount = 0;
    FaultKind m_fault = FaultKind::None;
    QSerialPort::BaudRate m_baudRate = QSerialPort::Baud115200;
    bool m_open = false;
    bool m_dead = false;
    bool m_trace = false;
    QByteArray m_input;
    qsizetype m_read = 0;
    int m_readFaults = 0;
    /// What waits on the line behind a request that is held up, in its order.
    QList<QByteArray> m_held;
    qint64 m_heldUntil = 0;
    Call m_call;
    QList<FaultKind> m_injected;
};
