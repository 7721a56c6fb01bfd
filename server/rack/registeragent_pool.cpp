// What it makes of documents that wait for any register of a pool.

#include "rack/registeragent.h"

#include <utility>

namespace frserver {

RegisterAgent::Readiness RegisterAgent::readiness() const
{
    // Mostly it is at work, and asked whenever any register of the rack is given something.
    const bool isIdle = m_isStarted && m_isOpen && !m_request && !m_claimed && !m_acceptance
        && m_toSettle.isEmpty() && !m_pausedBy && !m_isStopping;
    if (!isIdle || !isOwner() || isWorkerOfFormerLease())
        return Readiness::Nothing;
    const QDateTime moment = now();
    if ((!m_shift.isOpen() && !m_shift.mayOpen(moment)) || m_shift.isEndDue(moment, steady()))
        return Readiness::Nothing;
    // What is wrong with it nobody tells but a document that is tried again.
    if (!m_waiting || steady() >= m_retryAt)
        return Readiness::Anything;
    // A shift that is opened is printed.
    const bool isPaperless = m_settings.isPaperless && m_shift.isOpen() && !m_isPaperWanted;
    return isPaperless && isOfPaper(m_waiting->reason) ? Readiness::Paperless : Readiness::Nothing;
}

void RegisterAgent::makeClaimed(const sale::StoredDocument& document)
{
    const sale::DocumentRequest& posted = document.request;
    // Something waits by now.
    m_options.glance->close();
    m_claimed = Claim{posted.id, posted.isPaperless};
    // It was free a moment ago; what was posted to itself meanwhile is next.
    if (m_options.deaths->value(posted.id) > 0)
        return advance();
    requestMaking({.id = posted.id, .kind = posted.kind});
    announce();
}

/// Unless it is made already, another register may have it.
void RegisterAgent::giveUpClaim()
{
    if (!m_claimed || (isMaking() && m_request->id == m_claimed->id))
        return;
    Q_EMIT claimGivenUp(std::exchange(m_claimed, std::nullopt)->mayBeToBlame);
}

/// The hold is what it waits for still, empty for one that is done with. Whether that says nothing of the
/// paper that others wait for.
bool RegisterAgent::endClaim(const QString& id, const QString& hold)
{
    if (!m_claimed || m_claimed->id != id)
        return false;
    const bool isPaperless = m_claimed->isPaperless;
    // It wants paper for that, too: until there is some nothing of the kind is tried.
    if (isPaperless && isOfPaper(hold))
        m_isPaperWanted = true;
    m_claimed->mayBeToBlame = !isOfPaper(hold) && hold != QStringLiteral("line");
    if (hold.isEmpty())
        m_claimed.reset();
    return hold.isEmpty() && isPaperless && m_waiting && isOfPaper(m_waiting->reason);
}

} // namespace frserver
