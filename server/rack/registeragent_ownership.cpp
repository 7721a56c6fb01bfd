// Whether the register is this service's, and what follows when it is not.

#include "rack/registeragent.h"

#include "rack/racklog.h"

#include "journalerror.h"

#include <utility>

namespace frserver {

namespace {

/// Somebody may be about to put it right, or to say that it is meant.
constexpr qint64 longestAstrayMs = 60'000;

bool leadsAstray(const QString& reason)
{
    return reason == QStringLiteral("wrongRegister") || reason == QStringLiteral("newDrive")
        || reason == QStringLiteral("testDrive");
}

} // namespace

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
    m_hasMade = false;
    if (!m_isAlive || m_endingSince)
        return;
    qCWarning(rackLog).noquote() << name() << "is no more this service's, and its worker is killed";
    m_endingSince = steady();
    m_worker->kill();
}

/// Another service's line may lead to the register still.
void RegisterAgent::giveWay()
{
    const bool isAstray = m_waiting && leadsAstray(m_waiting->reason) && isOwner() && !m_isOpen && !m_pausedBy
        && !m_isStopping && !m_acceptance;
    if (!isAstray) {
        m_strayedSince.reset();
        return;
    }
    if (!m_strayedSince)
        m_strayedSince = steady();
    if (m_request || m_endingSince || steady() - *m_strayedSince < longestAstrayMs)
        return;
    m_strayedSince = steady();
    if (mayBeBegun() || !m_options.ownership->giveWay(name()))
        return;
    qCWarning(rackLog).noquote() << name() << "is left to another service:" << m_waiting->text;
    if (m_isAlive)
        endWorker();
}

/// By this owner, which asks its register about it as soon as a person has put that back.
bool RegisterAgent::mayBeBegun() const
{
    if (!m_hasMade)
        return false;
    try {
        return !m_store
                    .find({.states = {sale::DocumentState::Running},
                        .registerName = name(),
                        .limit = 1,
                        .withAttempts = false,
                        .withBodies = false})
                    .isEmpty();
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << name() << error.what();
        return true;
    }
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
