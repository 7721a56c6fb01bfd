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

const QString hostError = QStringLiteral("HostError");

/// Nobody can say what it would take, and no person is called for it. Paper, line, drive and the like are
/// waited for.
bool isUnexplained(const QString& reason)
{
    return reason == QStringLiteral("internal") || reason == QStringLiteral("other");
}

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
void RegisterAgent::giveUpBegun(const QString& reason)
{
    if (!isUnexplained(reason) || m_begun.isEmpty() || ++m_failedStarts < mostFailedStarts)
        return;
    m_failedStarts = 0;
    try {
        for (const QString& id : std::as_const(m_begun)) {
            const std::optional<sale::StoredDocument> document = m_store.findId(id);
            if (document && document->state == sale::DocumentState::Running)
                m_store.settle(id, document->attemptCount, {.state = sale::DocumentState::Unknown});
        }
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << error.what();
    }
}

} // namespace frserver
