#include "postgres/workertable.h"

#include "postgres/postgresconnection.h"
#include "storedtime.h"

#include <QSqlQuery>

namespace sale {

namespace {

const QString ofProcess
    = QStringLiteral("register = ? AND machine = ? AND space = ? AND process = ? AND started = ?");
/// TCP gives up by then what was sent before.
const QString stillHeard
    = QStringLiteral("clock_timestamp() - interval '%1 minutes'").arg(WorkerTable::longestOnItsWay.count());

} // namespace

void WorkerTable::add(const LeasedRegister& lease, bool doesLineLast)
{
    const ProcessIdentity own = ProcessIdentity::own();
    m_connection.execute(
        QStringLiteral(
            "INSERT INTO workers (register, epoch, machine, space, process, started, lasts) "
            "VALUES (?, ?, ?, ?, ?, ?, ?) ON CONFLICT (register, machine, space, process, started) "
            "DO UPDATE SET epoch = excluded.epoch, lasts = excluded.lasts"),
        {lease.registerName, lease.epoch, own.machine, own.space, own.process, own.started, doesLineLast});
}

void WorkerTable::remove(const QString& registerName, const ProcessIdentity& process)
{
    m_connection.execute(QStringLiteral("DELETE FROM workers WHERE ") + ofProcess,
        {registerName, process.machine, process.space, process.process, process.started});
}

void WorkerTable::noteEnded(const QString& registerName, const ProcessIdentity& process)
{
    const QVariantList values{registerName, process.machine, process.space, process.process, process.started};
    m_connection.execute(
        QStringLiteral("UPDATE workers SET killed = clock_timestamp() WHERE lasts AND killed IS NULL AND ")
            + ofProcess,
        values);
    m_connection.execute(QStringLiteral("DELETE FROM workers WHERE NOT lasts AND ") + ofProcess, values);
}

QList<WorkerTable::Entry> WorkerTable::entries(const QString& condition, const QVariantList& values)
{
    QList<Entry> found;
    m_connection.select(
        QStringLiteral("SELECT register, epoch, machine, space, process, started, %1, lasts FROM workers "
                       "WHERE %2 ORDER BY epoch")
            .arg(m_connection.moment(QStringLiteral("killed")), condition),
        values, [&found](const QSqlQuery& row) {
            const QDateTime killed = timeFromStored(row.value(6).toString());
            found.append({row.value(0).toString(),
                {row.value(1).toLongLong(),
                    {row.value(2).toString(), row.value(3).toString(), row.value(4).toLongLong(),
                        row.value(5).toLongLong()},
                    killed.isValid(), killed, row.value(7).toBool()}});
        });
    return found;
}

QList<WorkerTable::Row> WorkerTable::others(const QString& registerName)
{
    const ProcessIdentity own = ProcessIdentity::own();
    QList<Row> standing;
    for (Entry& entry :
        entries(QStringLiteral("register = ? AND (killed IS NULL OR killed > %1)").arg(stillHeard),
            {registerName})) {
        Row& row = entry.row;
        if (row.process == own)
            continue;
        const bool isNews = !row.wasKilled && row.process.fate() == ProcessIdentity::Fate::Ended;
        if (isNews)
            noteEnded(registerName, row.process);
        row.wasKilled = row.wasKilled || isNews;
        if (!isNews || row.doesLineLast)
            standing.append(row);
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

void WorkerTable::noteAllEnded()
{
    m_connection.execute(QStringLiteral("DELETE FROM workers WHERE killed <= ") + stillHeard);
    for (const Entry& entry :
        entries(QStringLiteral("machine = ? AND killed IS NULL"), {ProcessIdentity::own().machine})) {
        if (entry.row.process.fate() == ProcessIdentity::Fate::Ended)
            noteEnded(entry.registerName, entry.row.process);
    }
}

} // namespace sale
