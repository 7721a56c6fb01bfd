// Whether the register is this service's, and what follows when it is not.

#include "rack/registeragent.h"

#include "rack/racklog.h"

#include <utility>

namespace frserver {

/// Nothing of it is asked, and what is known of it is of a time before.
void RegisterAgent::standBy()
{
    m_isStandby = true;
    m_isOpen = false;
    m_waiting = m_options.ownership->obstacle(name());
}

/// Whoever has the register next must not find this worker at it, and waits no longer than the lease.
void RegisterAgent::leaveToOthers()
{
    forgetKept();
    if (!m_isAlive || m_endingSince)
        return;
    qCWarning(rackLog).noquote() << name() << "is no more this service's, and its worker is killed";
    m_endingSince = steady();
    m_worker->kill();
}

/// The register was another one's in between, and nobody looked. What the worker writes is refused, and its
/// line may be somebody else's by now.
bool RegisterAgent::isWorkerOfFormerLease() const
{
    const QString epoch = QStringLiteral("epoch");
    return m_isAlive && !m_lease.isEmpty()
        && m_lease.value(epoch) != m_options.ownership->lease(name()).value(epoch);
}

/// A worker that is at something for long goes on as long as the register is this service's.
void RegisterAgent::tellLease()
{
    if (!m_request || !m_isAlive)
        return;
    const QJsonObject lease = m_options.ownership->lease(name());
    if (lease != std::exchange(m_lease, lease))
        m_worker->send({{QStringLiteral("lease"), lease}});
}

} // namespace frserver
