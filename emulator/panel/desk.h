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

#include <QMap>
#include <QTimer>

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
    /// The register was switched on.
    void begin();
    void setHands(const Hands& hands) { m_hands = hands; }
    void setSnapshots(std::unique_ptr<Snapshots> snapshots) { m_snapshots = std::move(snapshots); }
    /// The rule is that of a TCP port for a second connection; empty for another line.
    void setLine(const QString& line, const QString& tcpConnections)
    {
        m_line = line;
        m_tcpConnections = tcpConnections;
    }
    /// The register works no more, since what it did last could not be kept and is not told.
    void stop(const QString& why);
    /// @}

    int number() const { return m_number; }
    const QString& line() const { return m_line; }
    const QString& tcpConnections() const { return m_tcpConnections; }
    Register& device() { return m_device; }
    const Register& device() const { return m_device; }
    FaultDesk& faults() { return m_faults; }
    const FaultDesk& faults() const { return m_faults; }
    QStringList snapshotNames() const { return m_snapshots->names(); }
    /// Empty for one that works.
    const QString& stopReason() const { return m_stopReason; }
    const HostRecord& hostRecord() const { return m_watch.record(); }
    const ExchangeLog& exchanges() const { return m_exchanges; }
    const TapeLog& tape() const { return m_tape; }
    /// Those of earlier runs are read when they are asked for first.
    const DocumentArchive& documents();
    const http::EventStream& events() const { return m_events; }

    /// @name Changes that no host asked for
    /// @{
    void setPower(bool isOn);
    /// That part was changed: it is kept and told.
    void changed(const QString& part);
    /// Throws http::Problem when the register has stopped.
    void checkWorks() const;
    void keepSnapshot(const QString& name);
    void removeSnapshot(const QString& name);
    void restoreSnapshot(const QString& name);
    /// As it left the factory, with another fiscal drive; around it all is as at the start of the program,
    /// and nothing misbehaves any more.
    void reset();
    /// @}

private:
    struct Pending
    {
        QByteArray type;
        QJsonObject data;
    };
    /// What changes also when nobody asked for it here.
    struct Seen
    {
        bool hasPaper = true;
        std::optional<qsizetype> linesLeft;
        bool isPowered = true;
        bool isDrawerOpen = false;
    };

    void tell(const QByteArray& type, QJsonObject data);
    void tellOf(const LoggedExchange& exchange);
    Seen seen() const;
    void tellWhatChanged();
    /// The register is another one than before.
    void beginAnew();
    void replaced();

    int m_number;
    Register& m_device;
    HostWatch& m_watch;
    FaultDesk& m_faults;
    http::EventStream& m_events;
    Hands m_hands;
    std::unique_ptr<Snapshots> m_snapshots;
    QString m_line;
    QString m_tcpConnections;
    ExchangeLog m_exchanges;
    TapeLog m_tape;
    DocumentArchive m_documents;
    bool m_areDocumentsRead = true;
    /// With snapshots that go with the program, by name.
    QMap<QString, DocumentArchive> m_keptDocuments;
    QList<Pending> m_pending;
    Seen m_seen;
    /// The cashier pushes the drawer shut.
    QTimer m_drawer;
    QString m_stopReason;
    bool m_wasOperatorReachable;
    /// Number of the last document before the exchange that is going on.
    quint32 m_documentBefore;
    qsizetype m_warnings = 0;
};

} // namespace emulator::panel
