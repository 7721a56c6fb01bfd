#include "postgres/workertable.h"

#include "postgres/postgresconnection.h"

#include <QSqlQuery>

namespace sale {

void WorkerTable::add(const LeasedRegister& lease)
{
    const ProcessIdentity own = ProcessIdentity::own();
    m_connection.execute(
        QStringLiteral("INSERT INTO workers (register, epoch, machine, space, process, started) "
                       "VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT (register, machine, space, process, started) "
                       "DO UPDATE SET epoch = excluded.epoch"),
        {lease.registerName, lease.epoch, own.machine, own.space, own.process, own.started});
}

void WorkerTable::remove(const QString& registerName, const ProcessIdentity& process)
{
    m_connection.execute(
        QStringLiteral("DELETE FROM workers WHERE register = ? AND machine = ? AND space = ? "
                       "AND process = ? AND started = ?"),
        {registerName, process.machine, process.space, process.process, process.started});
}

void WorkerTable::noteKilled(const QString& registerName, const ProcessIdentity& process)
{
    m_connection.execute(
        QStringLiteral("UPDATE workers SET killed = clock_timestamp() WHERE register = ? AND machine = ? "
                       "AND space = ? AND process = ? AND started = ?"),
        {registerName, process.machine, process.space, process.process, process.started});
}

QList<WorkerTable::Entry> WorkerTable::entries(const QString& condition, const QVariantList& values)
{
    QList<Entry> found;
    m_connection.select(
        QStringLiteral("SELECT register, epoch, machine, space, process, started, killed IS NOT NULL "
                       "FROM workers WHERE %1 "
                       "ORDER BY epoch")
            .arg(condition),
        values, [&found](const QSqlQuery& row) {
            found.append({row.value(0).toString(),
                {row.value(1).toLongLong(),
                    {row.value(2).toString(), row.value(3).toString(), row.value(4).toLongLong(),
                        row.value(5).toLongLong()},
                    row.value(6).toBool()}});
        });
    return found;
}

QList<WorkerTable::Row> WorkerTable::others(const QString& registerName)
{
    const ProcessIdentity own = ProcessIdentity::own();
    QList<Row> standing;
    for (const Entry& entry : entries(QStringLiteral("register = ?"), {registerName})) {
        const ProcessIdentity& process = entry.row.process;
        if (process == own)
            continue;
        if (!entry.row.wasKilled && process.fate() == ProcessIdentity::Fate::Ended)
            remove(registerName, process);
        else
            standing.append(entry.row);
    }
    return standing;
}

void WorkerTable::removeFormer(const LeasedRegister& lease)
{
    m_connection.execute(QStringLiteral("DELETE FROM workers WHERE register = ? AND epoch < ?"),
        {lease.registerName, lease.epoch});
}

void WorkerTable::removeOtherMachines(const QString& registerName)
{
    m_connection.execute(QStringLiteral("DELETE FROM workers WHERE register = ? AND machine <> ?"),
        {registerName, ProcessIdentity::own().machine});
}

void WorkerTable::removeEnded()
{
    // TCP gives up by then.
    m_connection.execute(
        QStringLiteral("DELETE FROM workers WHERE killed < clock_timestamp() - interval '20 minutes'"));
    for (const Entry& entry :
        entries(QStringLiteral("machine = ? AND killed IS NULL"), {ProcessIdentity::own().machine})) {
        if (entry.row.process.fate() == ProcessIdentity::Fate::Ended)
            remove(entry.registerName, entry.row.process);
    }
}

} // namespace sale
