// Documents that would keep their register from all others.

#include "rack/registeragent.h"

#include "rack/racklog.h"

#include "identifiedsale.h"
#include "journalerror.h"

namespace frserver {

namespace {

constexpr int mostDeaths = 3;
/// Behind 1, 2, 4 and 8 s: a moment without memory, or a register that is still starting, is over by then.
constexpr int mostFailures = 5;
/// Some five minutes. The register may be switched off and on for as long, and it alone knows the truth.
constexpr int mostFailedStarts = 10;
/// Of a register that is not reached still.
constexpr qint64 lookAgainMs = 60'000;

const QString hostError = QStringLiteral("HostError");

} // namespace

/// Nothing of it was begun.
void RegisterAgent::refuse(
    const QString& id, sale::ErrorKind kind, const QString& text, const QString& exceptionName)
{
    m_store.refuse(id, {.failure = sale::keptFailure({text, exceptionName, {}, false, kind})});
    m_options.deaths->remove(id);
    m_options.failures->remove(id);
    Q_EMIT documentChanged(id);
}

bool RegisterAgent::refuseDeadly(const QString& id)
{
    if (m_options.deaths->value(id) < mostDeaths)
        return false;
    refuse(id, sale::ErrorKind::Internal,
        QStringLiteral("Программа кассы аварийно завершалась на этом документе, не начав его"), hostError);
    return true;
}

bool RegisterAgent::refuseFailing(const QString& id, const QString& reason, const QString& text)
{
    if (!isUnexplained(reason) || ++(*m_options.failures)[id] < mostFailures)
        return false;
    try {
        refuse(id, sale::errorKindNamed(reason), text, hostError);
        return true;
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << error.what();
        return false;
    }
}

/// What the register cannot be asked about, for a reason that nobody waits to pass, a person has to look up.
void RegisterAgent::giveUpBegun()
{
    if (m_begun.isEmpty() || ++m_failedStarts < mostFailedStarts)
        return;
    m_failedStarts = 0;
    try {
        for (const QString& id : std::as_const(m_begun)) {
            const std::optional<sale::StoredDocument> document = m_store.findId(id);
            if (document && document->isToBeAsked())
                m_store.settle(id, document->attemptCount, {.state = sale::DocumentState::Unknown});
        }
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << error.what();
    }
}

/// The same whatever keeps the register from being asked, a pause among that: nobody waits for it for ever.
/// It is asked all the same once it is reached. What another program is at is none of these.
void RegisterAgent::giveUpInTime()
{
    if (m_isOpen || !isOwner()) {
        m_giveUpAt = steady() + m_options.longestUnreached;
        return;
    }
    if (steady() < m_giveUpAt)
        return;
    m_giveUpAt = steady() + lookAgainMs;
    try {
        for (const QString& id :
            sale::giveUpPendingSales(m_store, name(), std::chrono::milliseconds(m_options.longestUnreached)))
            Q_EMIT documentChanged(id);
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << name() << error.what();
    }
}

} // namespace frserver
