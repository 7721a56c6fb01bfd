// What outlives the service.

#include "rack/registeragent.h"

#include "rack/keptstates.h"
#include "rack/racklog.h"

#include "documentanswer.h"
#include "journalerror.h"

namespace frserver {

namespace {

const QString pausedByKey = QStringLiteral("pausedBy");
const QString pausedSinceKey = QStringLiteral("pausedSince");
const QString unsentSinceKey = QStringLiteral("unsentSince");
const QString unsentLastKey = QStringLiteral("unsentLast");

QDateTime momentOf(const QJsonObject& json, const QString& member)
{
    return QDateTime::fromString(json.value(member).toString(), Qt::ISODateWithMs);
}

} // namespace

/// A register that was paused for somebody does not sell because the computer was restarted: nothing is begun
/// before that is known.
bool RegisterAgent::recall()
{
    if (m_isRecalled || m_options.kept == nullptr)
        return true;
    try {
        m_kept = m_options.kept->of(name());
    } catch (const sale::JournalError& error) {
        m_waiting = Waiting{QStringLiteral("journal"), QString::fromUtf8(error.what())};
        return false;
    }
    m_isRecalled = true;
    m_waiting.reset();
    m_unsentSince = momentOf(m_kept, unsentSinceKey);
    m_unsentLast = m_kept.value(unsentLastKey).toInteger();
    // Somebody may have paused it just now.
    if (!m_pausedBy && m_kept.contains(pausedByKey)) {
        m_pausedBy = m_kept.value(pausedByKey).toString();
        m_pausedSince = momentOf(m_kept, pausedSinceKey);
        qCInfo(rackLog).noquote() << name() << "is paused still, by" << *m_pausedBy;
    }
    return true;
}

QJsonObject RegisterAgent::toKeep() const
{
    QJsonObject state;
    if (m_pausedBy) {
        state.insert(pausedByKey, *m_pausedBy);
        state.insert(pausedSinceKey, sale::momentJson(m_pausedSince));
    }
    if (m_unsentSince.isValid() && !m_isUnsentTold) {
        state.insert(unsentSinceKey, sale::momentJson(m_unsentSince));
        state.insert(unsentLastKey, m_unsentLast);
    }
    return state;
}

/// What cannot be written now is written later; the register goes on by what is known.
void RegisterAgent::keep()
{
    if (m_options.kept == nullptr || !m_isRecalled)
        return;
    const QJsonObject state = toKeep();
    if (state == m_kept)
        return;
    try {
        m_options.kept->keep(name(), state);
        m_kept = state;
        m_isKeepingFailed = false;
    } catch (const sale::JournalError& error) {
        if (!std::exchange(m_isKeepingFailed, true))
            qCWarning(rackLog).noquote() << name() << error.what();
    }
}

} // namespace frserver
