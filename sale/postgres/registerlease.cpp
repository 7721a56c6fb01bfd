#include "postgres/registerlease.h"

#include "postgres/postgresschema.h"

#include <QUuid>

#include <ctime>

namespace sale {

using std::chrono::milliseconds;

milliseconds RegisterLease::timeSinceBoot()
{
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::duration_cast<milliseconds>(
        std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec));
}

RegisterLease::RegisterLease(
    const PostgresPlace& place, const QString& registerName, milliseconds term, const Clock& clock)
    : m_connection(place, patienceMs)
    , m_term(term)
    , m_clock(clock)
    // A process that is started anew is another owner.
    , m_lease{registerName, QUuid::createUuid().toString(QUuid::WithoutBraces), 0}
{
    postgresschema::require(m_connection);
}

bool RegisterLease::acquire()
{
    const milliseconds asked = m_clock();
    const QVariant epoch = m_connection.value(
        QStringLiteral(
            "INSERT INTO leases VALUES (?, ?, 1, clock_timestamp() + ? * interval '1 millisecond') "
            "ON CONFLICT (register) DO UPDATE SET owner = excluded.owner, "
            "epoch = leases.epoch + 1, until = excluded.until "
            "WHERE leases.until < clock_timestamp() OR leases.owner = excluded.owner "
            "RETURNING epoch"),
        {m_lease.registerName, m_lease.owner, qint64{m_term.count()}});
    m_heldFrom = epoch.isValid() ? std::optional(asked) : std::nullopt;
    if (epoch.isValid())
        m_lease.epoch = epoch.toLongLong();
    return epoch.isValid();
}

bool RegisterLease::renew()
{
    const milliseconds asked = m_clock();
    const int renewed = m_connection.execute(
        QStringLiteral("UPDATE leases SET until = clock_timestamp() + ? * interval '1 millisecond' "
                       "WHERE register = ? AND owner = ? AND epoch = ?"),
        {qint64{m_term.count()}, m_lease.registerName, m_lease.owner, m_lease.epoch});
    m_heldFrom = renewed == 1 ? std::optional(asked) : std::nullopt;
    return renewed == 1;
}

void RegisterLease::release()
{
    m_heldFrom.reset();
    m_connection.execute(QStringLiteral("UPDATE leases SET until = '-infinity' "
                                        "WHERE register = ? AND owner = ? AND epoch = ?"),
        {m_lease.registerName, m_lease.owner, m_lease.epoch});
}

bool RegisterLease::isHeld() const
{
    return m_heldFrom && m_clock() < *m_heldFrom + m_term * 4 / 5;
}

} // namespace sale
