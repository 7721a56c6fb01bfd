#pragma once

#include "postgres/leasedregister.h"
#include "postgres/processidentity.h"

#include <QDateTime>
#include <QList>

#include <chrono>

namespace sale {

class PostgresConnection;

/// Which processes may have a register's line open, of any machine: each stands there before it opens it,
/// until it has closed it or is known to have ended. All operations throw JournalError.
class WorkerTable
{
public:
    struct Row
    {
        qint64 epoch = 0;
        ProcessIdentity process;
        /// It has ended, and the network may have something of it yet.
        bool wasKilled = false;
        /// When that was noted; invalid while it is news.
        QDateTime killed;
        /// The network may, when it ends without leave.
        bool doesLineLast = false;
    };

    /// So long a network may keep what somebody has sent who has ended since.
    static constexpr std::chrono::minutes longestOnItsWay{20};

    /// The connection must outlive it.
    explicit WorkerTable(PostgresConnection& connection)
        : m_connection(connection)
    {
    }

    void add(const LeasedRegister& lease, bool doesLineLast = false);
    /// It has closed its line behind the last answer.
    void remove(const QString& registerName, const ProcessIdentity& process);
    /// It has ended without that. Where its line lasts it stays for as long as a network may keep what it has
    /// sent.
    void noteEnded(const QString& registerName, const ProcessIdentity& process);
    /// All of the register but this process; those that are known to have ended are noted, and left out
    /// unless their line lasts.
    QList<Row> others(const QString& registerName);
    /// Those of whoever had the register before.
    void removeFormer(const LeasedRegister& lease);
    /// Those of other machines, when somebody has said that they cannot reach it any more.
    void removeOtherMachines(const QString& registerName);
    /// Notes those of this machine that have ended, of whatever register.
    void noteAllEnded();

private:
    struct Entry
    {
        QString registerName;
        Row row;
    };
    QList<Entry> entries(const QString& condition, const QVariantList& values);

    PostgresConnection& m_connection;
};

} // namespace sale
