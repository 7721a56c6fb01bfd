#include "postgres/registerleases.h"

#include "postgres/postgresschema.h"
#include "postgres/workeddrives.h"
#include "postgres/workertable.h"

#include <QSqlQuery>
#include <QSysInfo>
#include <QUuid>

#include <ctime>

namespace sale {

using std::chrono::milliseconds;

namespace {

const QString columns
    = QStringLiteral("SELECT register, owner, until > clock_timestamp(), machine, space, process, started, "
                     "host, bound FROM leases WHERE ");

/// Who would work a register says so each minute.
const QString longAgo = QStringLiteral("clock_timestamp() - interval '3 minutes'");
/// Others look each second, and a second after a fault of the database.
constexpr milliseconds standBack{10'000};

/// A register's row.
struct LeaseRow
{
    static LeaseRow of(const QSqlQuery& row)
    {
        const ProcessIdentity process{row.value(3).toString(), row.value(4).toString(),
            row.value(5).toLongLong(), row.value(6).toLongLong()};
        return {row.value(0).toString(), row.value(1).toString(), row.value(2).toBool(), process,
            row.value(7).toString(), row.value(8).toBool()};
    }

    RegisterLeases::Standing standingFor(const RegisterLeases::Wish& wish, const QString& other) const
    {
        using Standing = RegisterLeases::Standing;
        // Nobody has to wait for the end of a lease whose owner is known to be gone.
        const bool isFree = !isRunning || owner == other || process.fate() == ProcessIdentity::Fate::Ended;
        const bool isElsewhere
            = !process.machine.isEmpty() && process.machine != ProcessIdentity::own().machine;
        if (isElsewhere && (isBound || wish.isBound) && !(isFree && wish.isMovedHere))
            return {Standing::OtherMachine, host, isFree ? 0 : process.process};
        return {isFree ? Standing::Free : Standing::Owned, host, process.process};
    }

    QString registerName;
    QString owner;
    bool isRunning = false;
    ProcessIdentity process;
    QString host;
    bool isBound = false;
};

} // namespace

milliseconds RegisterLeases::timeSinceBoot()
{
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::duration_cast<milliseconds>(
        std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec));
}

RegisterLeases::RegisterLeases(const PostgresPlace& place, milliseconds term, const Clock& clock)
    : m_connection(place, patienceMs)
    , m_term(term)
    , m_clock(clock)
    // A process that is started anew is another owner.
    , m_owner(QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    postgresschema::require(m_connection);
}

QStringList RegisterLeases::leased(const SqlConnection& connection)
{
    QStringList names;
    connection.select(QStringLiteral("SELECT register FROM leases WHERE until > clock_timestamp()"), {},
        [&names](const QSqlQuery& row) { names.append(row.value(0).toString()); });
    return names;
}

QHash<QString, RegisterLeases::Standing> RegisterLeases::standings(const QList<Wish>& wishes)
{
    QHash<QString, Standing> found;
    if (wishes.isEmpty())
        return found;
    QHash<QString, Wish> wanted;
    for (const Wish& wish : wishes) {
        wanted.insert(wish.registerName, wish);
        // One that nobody has had yet has no row.
        found.insert(wish.registerName, {});
    }
    const QStringList places(wanted.size(), QStringLiteral("?"));
    QVariantList names;
    for (auto one = wanted.cbegin(); one != wanted.cend(); ++one)
        names.append(one.key());
    m_connection.select(columns + QStringLiteral("register IN (%1)").arg(places.join(QLatin1Char(','))),
        names, [&](const QSqlQuery& query) {
            const LeaseRow row = LeaseRow::of(query);
            found.insert(row.registerName, row.standingFor(wanted.value(row.registerName), m_owner));
        });
    return found;
}

bool RegisterLeases::isFree(const Wish& wish)
{
    bool isSo = false;
    // Another one that takes or renews it is not waited for, and a worker that is stopped in the middle of
    // what it writes neither.
    m_connection.select(columns + QStringLiteral("register = ? FOR UPDATE SKIP LOCKED"), {wish.registerName},
        [&](const QSqlQuery& query) {
            isSo = LeaseRow::of(query).standingFor(wish, m_owner).kind == Standing::Free;
        });
    return isSo;
}

qint64 RegisterLeases::write(const Wish& wish)
{
    const ProcessIdentity own = ProcessIdentity::own();
    const QVariant epoch = m_connection.value(
        QStringLiteral("UPDATE leases SET owner = ?, epoch = epoch + 1, "
                       "until = clock_timestamp() + ? * interval '1 millisecond', machine = ?, space = ?, "
                       "process = ?, started = ?, host = ?, bound = ? WHERE register = ? "
                       "RETURNING epoch"),
        {m_owner, qint64{m_term.count()}, own.machine, own.space, own.process, own.started,
            QSysInfo::machineHostName(), wish.isBound, wish.registerName});
    if (wish.isMovedHere)
        WorkerTable(m_connection).removeOtherMachines(wish.registerName);
    return epoch.toLongLong();
}

bool RegisterLeases::take(const Wish& wish)
{
    const milliseconds asked = m_clock();
    const QString& name = wish.registerName;
    m_held.remove(name);
    if (m_clock() < m_rests.value(name))
        return false;
    m_connection.execute(
        QStringLiteral("INSERT INTO leases (register) VALUES (?) ON CONFLICT DO NOTHING"), {name});
    qint64 epoch = 0;
    m_connection.together([&] { epoch = isFree(wish) ? write(wish) : 0; });
    if (epoch != 0)
        m_held.insert(name, {epoch, asked});
    return epoch != 0;
}

QStringList RegisterLeases::renew()
{
    const milliseconds asked = m_clock();
    QHash<QString, qint64> renewed;
    m_connection.select(
        // One that another process is about to take is none of this one's any more, and holds up no other.
        QStringLiteral("UPDATE leases SET until = clock_timestamp() + ? * interval '1 millisecond' "
                       "WHERE register IN (SELECT register FROM leases WHERE owner = ? "
                       "AND until > '-infinity' FOR NO KEY UPDATE SKIP LOCKED) RETURNING register, epoch"),
        {qint64{m_term.count()}, m_owner},
        [&](const QSqlQuery& row) { renewed.insert(row.value(0).toString(), row.value(1).toLongLong()); });
    QStringList lost;
    for (auto one = m_held.begin(); one != m_held.end(); ++one) {
        one->from = asked;
        if (renewed.value(one.key()) != one->epoch)
            lost.append(one.key());
    }
    for (const QString& registerName : std::as_const(lost))
        m_held.remove(registerName);
    return lost;
}

void RegisterLeases::leaveDrive(const QString& registerName)
{
    WorkedDrives(m_connection).leave(lease(registerName));
}

void RegisterLeases::want(const QStringList& registers)
{
    QStringList rows;
    QVariantList values;
    for (const QString& name : registers) {
        rows.append(QStringLiteral("(?, ?, clock_timestamp())"));
        values << name << m_owner;
    }
    if (rows.isEmpty())
        return;
    m_connection.execute(QStringLiteral("INSERT INTO candidates (register, owner, seen) VALUES %1 "
                                        "ON CONFLICT (register, owner) DO UPDATE SET seen = excluded.seen")
                             .arg(rows.join(QLatin1Char(','))),
        values);
}

bool RegisterLeases::giveWay(const QString& registerName)
{
    const QVariant other = m_connection.value(
        QStringLiteral("SELECT 1 FROM candidates WHERE register = ? AND owner <> ? AND seen > %1 LIMIT 1")
            .arg(longAgo),
        {registerName, m_owner});
    if (!other.isValid())
        return false;
    end(registerName);
    m_rests.insert(registerName, m_clock() + standBack);
    return true;
}

void RegisterLeases::release(const QString& registerName)
{
    m_connection.execute(
        QStringLiteral("DELETE FROM candidates WHERE register = ? AND owner = ?"), {registerName, m_owner});
    end(registerName);
}

void RegisterLeases::end(const QString& registerName)
{
    const qint64 epoch = m_held.take(registerName).epoch;
    m_connection.execute(QStringLiteral("UPDATE leases SET until = '-infinity' "
                                        "WHERE register = ? AND owner = ? AND epoch = ?"),
        {registerName, m_owner, epoch});
}

void RegisterLeases::tidy()
{
    WorkerTable(m_connection).noteAllEnded();
    WorkedDrives(m_connection).tidy();
    m_connection.execute(QStringLiteral("DELETE FROM candidates WHERE seen < %1").arg(longAgo));
}

bool RegisterLeases::isHeld(const QString& registerName) const
{
    return m_held.contains(registerName) && m_clock() < heldUntil(registerName);
}

milliseconds RegisterLeases::heldUntil(const QString& registerName) const
{
    return m_held.value(registerName).from + m_term * 4 / 5;
}

LeasedRegister RegisterLeases::lease(const QString& registerName) const
{
    return {registerName, m_owner, m_held.value(registerName).epoch};
}

} // namespace sale
