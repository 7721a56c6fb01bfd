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
/// It is renewed meanwhile; nobody waits longer for a program that was killed on another machine.
const QString programTerm = QStringLiteral("interval '2 minutes'");

/// Another register may be there later.
const QString aMomentAgo = QStringLiteral("clock_timestamp() - interval '1 minute'");

bool isProgram(const QString& registerName)
{
    return registerName.startsWith(programPrefix);
}

} // namespace

std::optional<WorkedDrives::Holder> WorkedDrives::holderWhere(
    const QString& words, const QVariantList& values) const
{
    std::optional<Holder> holder;
    m_connection.select(
        QStringLiteral("SELECT drive, register, until > clock_timestamp(), lost, machine, space, process, "
                       "started, host FROM drives JOIN leases USING (register, epoch) WHERE ")
            + words,
        values, [&holder](const QSqlQuery& row) {
            holder = Holder{row.value(0).toString(), row.value(1).toString(), row.value(2).toBool(),
                row.value(3).toBool(),
                {row.value(4).toString(), row.value(5).toString(), row.value(6).toLongLong(),
                    row.value(7).toLongLong()},
                row.value(8).toString()};
        });
    return holder;
}

std::optional<WorkedDrives::Holder> WorkedDrives::holderOf(const QString& drive, const QString& words) const
{
    return holderWhere(QStringLiteral("drive = ?") + words, {drive});
}

void WorkedDrives::refuse(const Holder& holder)
{
    if (isProgram(holder.registerName))
        throw RegisterTaken(tr("the register with fiscal drive %1 is worked by process %2 on %3")
                                .arg(holder.drive)
                                .arg(holder.process.process)
                                .arg(holder.host),
            tr("wait for its end"));
    throw RegisterTaken(tr("the register with fiscal drive %1 is worked by frserver on %2, as %3")
                            .arg(holder.drive, holder.host, holder.registerName),
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

void WorkedDrives::take(const QString& drive, const LeasedRegister& lease, const QString& address)
{
    const std::optional<Holder> known = holderOf(drive);
    // Whoever has lost its line goes on with its lease, and finds the drive taken.
    const bool isLeft = known && known->isLost && !isProgram(lease.registerName);
    if (known && known->registerName != lease.registerName && !isLeft) {
        // Looked at first: whoever renews it while it is locked would take it for lost.
        if (known->isThere())
            refuse(*known);
        // Locked by whoever renews it, or is in the middle of a write, it is at work.
        const auto held = holderOf(drive, QStringLiteral(" FOR UPDATE OF leases SKIP LOCKED"));
        if (!held || held->isThere())
            refuse(*known);
        end(*held);
    }
    m_connection.execute(
        QStringLiteral(
            "UPDATE drives SET register = ?, epoch = ?, address = ?, lost = false WHERE drive = ?"),
        {lease.registerName, lease.epoch, neverNull(address), drive});
}

/// As one whose register was taken by name: what it writes is refused from now on, and it does not renew.
void WorkedDrives::end(const Holder& holder)
{
    m_connection.execute(
        QStringLiteral("UPDATE leases SET owner = '', epoch = epoch + 1, until = '-infinity' "
                       "WHERE register = ? AND epoch = (SELECT epoch FROM drives WHERE drive = ?)"),
        {holder.registerName, holder.drive});
}

void WorkedDrives::hold(const QString& drive, const LeasedRegister& lease, const QString& address)
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
        take(number, lease, address);
    });
}

std::optional<LeasedRegister> WorkedDrives::holdForProgram(const QString& drive, const QString& address)
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
        take(number, *lease, address);
    });
    return lease;
}

void WorkedDrives::renewForProgram(const LeasedRegister& lease)
{
    m_connection.execute(QStringLiteral("UPDATE leases SET until = clock_timestamp() + %1 "
                                        "WHERE register = ? AND owner = ? AND epoch = ?")
                             .arg(programTerm),
        {lease.registerName, lease.owner, lease.epoch});
}

void WorkedDrives::requireFree(const QString& drive, const LeasedRegister& lease) const
{
    const QString number = driveNumber(drive);
    const std::optional<Holder> holder = number.isEmpty() ? std::nullopt : holderOf(number);
    if (holder && holder->registerName != lease.registerName && holder->isAtWork())
        refuse(*holder);
}

void WorkedDrives::requireNobodyAt(
    const QString& address, const QString& words, const QVariantList& values) const
{
    if (address.isEmpty())
        return;
    const auto holder = holderWhere(
        QStringLiteral("until > clock_timestamp() AND machine <> ? AND (address = ? OR drive IN "
                       "(SELECT met.drive FROM addresses AS met WHERE met.address = ? AND seen > %1))")
                .arg(aMomentAgo)
            + words,
        QVariantList{ProcessIdentity::own().machine, address, address} + values);
    if (holder)
        refuse(*holder);
}

void WorkedDrives::requireFreeAddress(const QString& address) const
{
    requireNobodyAt(address);
}

void WorkedDrives::requireFreeAddress(
    const QString& address, const LeasedRegister& lease, const QString& lastDrive) const
{
    // A program is there for minutes, and may be the one that puts another drive in.
    requireNobodyAt(address,
        QStringLiteral(
            " AND NOT lost AND register <> ? AND (coalesce(?, '') IN ('', drive) OR register LIKE '%1%')")
            .arg(programPrefix),
        {lease.registerName, driveNumber(lastDrive)});
}

void WorkedDrives::noteMet(const QString& drive, const QString& address)
{
    if (!address.isEmpty())
        m_connection.execute(
            QStringLiteral(
                "INSERT INTO addresses (address, drive, seen) VALUES (?, ?, clock_timestamp()) "
                "ON CONFLICT (address) DO UPDATE SET drive = excluded.drive, seen = excluded.seen"),
            {address, driveNumber(drive)});
}

void WorkedDrives::lose(const LeasedRegister& lease)
{
    m_connection.execute(QStringLiteral("UPDATE drives SET lost = true WHERE register = ? AND epoch = ?"),
        {lease.registerName, lease.epoch});
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
    m_connection.execute(QStringLiteral("DELETE FROM addresses WHERE seen < ") + aMomentAgo);
    m_connection.execute(QStringLiteral("DELETE FROM leases WHERE register LIKE '%1%' "
                                        "AND until < clock_timestamp() - interval '1 day'")
                             .arg(programPrefix));
}

} // namespace sale
