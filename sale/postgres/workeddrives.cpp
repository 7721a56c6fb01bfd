#include "postgres/workeddrives.h"

#include "postgres/postgresconnection.h"
#include "registertaken.h"
#include "saletr.h"

#include <QSqlQuery>
#include <QSysInfo>
#include <QUuid>

namespace sale {

namespace {

/// No register of a configuration may be called so.
const QString programPrefix = QStringLiteral("program ");
/// Longer than a document takes; nobody waits longer for a program that was killed on another machine.
const QString programTerm = QStringLiteral("interval '5 minutes'");

} // namespace

bool WorkedDrives::Holder::isAtWork() const
{
    // Nobody has to wait for the end of a lease whose owner is known to be gone.
    return isRunning && process.fate() != ProcessIdentity::Fate::Ended;
}

std::optional<WorkedDrives::Holder> WorkedDrives::holderOf(const QString& drive, const QString& words) const
{
    std::optional<Holder> holder;
    m_connection.select(
        QStringLiteral("SELECT register, until > clock_timestamp(), machine, space, process, started, host "
                       "FROM drives JOIN leases USING (register, epoch) WHERE drive = ?")
            + words,
        {drive}, [&holder](const QSqlQuery& row) {
            holder = Holder{row.value(0).toString(), row.value(1).toBool(),
                {row.value(2).toString(), row.value(3).toString(), row.value(4).toLongLong(),
                    row.value(5).toLongLong()},
                row.value(6).toString()};
        });
    return holder;
}

void WorkedDrives::refuse(const QString& drive, const Holder& holder)
{
    if (holder.registerName.startsWith(programPrefix))
        throw RegisterTaken(tr("the register with fiscal drive %1 is worked by process %2 on %3")
                                .arg(drive)
                                .arg(holder.process.process)
                                .arg(holder.host),
            tr("wait for its end"));
    throw RegisterTaken(tr("the register with fiscal drive %1 is worked by frserver on %2, as %3")
                            .arg(drive, holder.host, holder.registerName),
        tr("go through that service, or stop it"));
}

/// In this transaction nobody else takes it.
void WorkedDrives::lock(const QString& drive)
{
    m_connection.execute(QStringLiteral("INSERT INTO drives (drive, register, epoch) VALUES (?, '', 0) "
                                        "ON CONFLICT DO NOTHING"),
        {drive});
    m_connection.value(QStringLiteral("SELECT 1 FROM drives WHERE drive = ? FOR UPDATE"), {drive});
}

void WorkedDrives::take(const QString& drive, const LeasedRegister& lease)
{
    if (const std::optional<Holder> known = holderOf(drive);
        known && known->registerName != lease.registerName) {
        // Looked at first: whoever renews it while it is locked would take it for lost.
        if (known->isAtWork())
            refuse(drive, *known);
        // Locked by whoever renews it, or is in the middle of a write, it is at work.
        const auto held = holderOf(drive, QStringLiteral(" FOR UPDATE OF leases SKIP LOCKED"));
        if (!held || held->isAtWork())
            refuse(drive, *known);
        end(drive, *held);
    }
    m_connection.execute(QStringLiteral("UPDATE drives SET register = ?, epoch = ? WHERE drive = ?"),
        {lease.registerName, lease.epoch, drive});
}

/// As one whose register was taken by name: what it writes is refused from now on, and it does not renew.
void WorkedDrives::end(const QString& drive, const Holder& holder)
{
    m_connection.execute(
        QStringLiteral("UPDATE leases SET owner = '', epoch = epoch + 1, until = '-infinity' "
                       "WHERE register = ? AND epoch = (SELECT epoch FROM drives WHERE drive = ?)"),
        {holder.registerName, drive});
}

void WorkedDrives::hold(const QString& drive, const LeasedRegister& lease)
{
    const QString number = driveNumber(drive);
    m_connection.together([&] {
        requireOwner(m_connection, lease);
        // It had another drive before.
        m_connection.execute(QStringLiteral("DELETE FROM drives WHERE register = ? AND drive <> ?"),
            {lease.registerName, number});
        if (number.isEmpty())
            return;
        lock(number);
        take(number, lease);
    });
}

std::optional<LeasedRegister> WorkedDrives::holdForProgram(const QString& drive)
{
    const QString number = driveNumber(drive);
    const ProcessIdentity own = ProcessIdentity::own();
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    std::optional<LeasedRegister> lease;
    if (number.isEmpty())
        return lease;
    m_connection.together([&] {
        lease.reset();
        lock(number);
        if (const auto holder = holderOf(number); holder && holder->isRunning && holder->process == own)
            return;
        lease = LeasedRegister{programPrefix + id, id, 1};
        m_connection.execute(
            QStringLiteral(
                "INSERT INTO leases (register, owner, epoch, until, machine, space, process, started, "
                "host) VALUES (?, ?, ?, clock_timestamp() + %1, ?, ?, ?, ?, ?)")
                .arg(programTerm),
            {lease->registerName, lease->owner, lease->epoch, own.machine, own.space, own.process,
                own.started, QSysInfo::machineHostName()});
        take(number, *lease);
    });
    return lease;
}

void WorkedDrives::requireFree(const QString& drive, const LeasedRegister& lease) const
{
    const QString number = driveNumber(drive);
    const std::optional<Holder> holder = number.isEmpty() ? std::nullopt : holderOf(number);
    if (holder && holder->registerName != lease.registerName && holder->isAtWork())
        refuse(number, *holder);
}

void WorkedDrives::leave(const LeasedRegister& lease)
{
    m_connection.execute(QStringLiteral("DELETE FROM drives WHERE register = ? AND epoch = ?"),
        {lease.registerName, lease.epoch});
}

void WorkedDrives::leaveForProgram(const LeasedRegister& lease)
{
    m_connection.together([&] {
        leave(lease);
        m_connection.execute(QStringLiteral("DELETE FROM leases WHERE register = ?"), {lease.registerName});
    });
}

void WorkedDrives::tidy()
{
    m_connection.execute(QStringLiteral("DELETE FROM leases WHERE register LIKE '%1%' "
                                        "AND until < clock_timestamp() - interval '1 day'")
                             .arg(programPrefix));
}

} // namespace sale
