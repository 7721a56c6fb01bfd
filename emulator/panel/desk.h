#pragma once

#include "conformance/hostwatch.h"
#include "http/eventstream.h"
#include "panel/documentarchive.h"
#include "panel/exchangelog.h"
#include "panel/faultdesk.h"
#include "panel/hands.h"
#include "panel/snapshots.h"
#include "panel/tapelog.h"
#include "register/register.h"

#include <memory>

namespace emulator::panel {

/// One register as the panel has it: the register, what is remembered of its line and its tape, and who is
/// told of it. Events are told once what they tell of is kept.
class Desk
{
public:
    /// The number is the register's among those of the program, from 1.
    Desk(int number, Register& device, HostWatch& watch, FaultDesk& faults, http::EventStream& events);

    /// @name Told by the register's program
    /// @{
    void passed(trace::Direction direction, const QByteArray& bytes) { m_exchanges.passed(direction, bytes); }
    void noted(const Exchange& exchange);
    void stored(const QJsonObject& entry);
    void printed(const tape::Page& page, quint32 document);
    /// All that was told is kept.
    void settle();
    /// The register was switched on, with these documents of earlier runs.
    void begin(const QList<StoredDocument>& documents);
    void setHands(const Hands& hands) { m_hands = hands; }
    void setSnapshots(std::unique_ptr<Snapshots> snapshots) { m_snapshots = std::move(snapshots); }
    void setLine(const QString& line) { m_line = line; }
    /// @}

    int number() const { return m_number; }
    const QString& line() const { return m_line; }
    Register& device() { return m_device; }
    const Register& device() const { return m_device; }
    FaultDesk& faults() { return m_faults; }
    const FaultDesk& faults() const { return m_faults; }
    Snapshots& snapshots() { return *m_snapshots; }
    const HostRecord& hostRecord() const { return m_watch.record(); }
    const ExchangeLog& exchanges() const { return m_exchanges; }
    const TapeLog& tape() const { return m_tape; }
    const DocumentArchive& documents() const { return m_documents; }
    const http::EventStream& events() const { return m_events; }

    /// @name Changes that no host asked for
    /// @{
    void setPower(bool isOn);
    /// That part was changed: it is kept and told.
    void changed(const QString& part);
    /// The register is another one than before.
    void replaced();
    /// @}

private:
    struct Pending
    {
        QByteArray type;
        QJsonObject data;
    };
    /// What ends by itself.
    struct Seen
    {
        bool hasPaper = true;
        bool isPowered = true;
        bool operator==(const Seen&) const = default;
    };

    void tell(const QByteArray& type, QJsonObject data);
    void tellOf(const LoggedExchange& exchange);
    Seen seen() const { return {m_device.hasPaper(), m_device.isPowered()}; }
    void tellWhatEnded();

    int m_number;
    Register& m_device;
    HostWatch& m_watch;
    FaultDesk& m_faults;
    http::EventStream& m_events;
    Hands m_hands;
    std::unique_ptr<Snapshots> m_snapshots;
    QString m_line;
    ExchangeLog m_exchanges;
    TapeLog m_tape;
    DocumentArchive m_documents;
    QList<Pending> m_pending;
    Seen m_seen;
    /// Number of the last document before the exchange that is going on.
    quint32 m_documentBefore;
    qsizetype m_warnings = 0;
};

} // namespace emulator::panel
