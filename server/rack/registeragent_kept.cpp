// What outlives the service.

#include "rack/registeragent.h"

#include "rack/keptstates.h"
#include "rack/racklog.h"

#include "documentanswer.h"
#include "journalerror.h"
#include "storedtime.h"

#include <utility>

namespace frserver {

namespace {

const QString pausedByKey = QStringLiteral("pausedBy");
const QString pausedSinceKey = QStringLiteral("pausedSince");
const QString driveKey = QStringLiteral("drive");
const QString shiftSinceKey = QStringLiteral("shiftSince");
const QString unsentSinceKey = QStringLiteral("unsentSince");
const QString unsentLastKey = QStringLiteral("unsentLast");

QDateTime momentOf(const QJsonObject& json, const QString& member)
{
    return sale::timeFromStored(json.value(member).toString());
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
    m_drive = m_kept.value(driveKey).toString();
    if (const QDateTime since = momentOf(m_kept, shiftSinceKey); since.isValid()) {
        m_shift.open(since, now(), steady());
        m_shift.forget();
    }
    m_unsentSince = momentOf(m_kept, unsentSinceKey);
    m_unsentLast = m_kept.value(unsentLastKey).toInteger();
    // Somebody may have paused it just now, or have ended that pause while it could not be written.
    if (!m_pausedBy && m_kept.contains(pausedByKey) && !wasKeptPauseEnded()) {
        m_pausedBy = m_kept.value(pausedByKey).toString();
        m_pausedSince = momentOf(m_kept, pausedSinceKey);
        qCInfo(rackLog).noquote() << name() << "is paused still, by" << *m_pausedBy;
    }
    return true;
}

/// Another service may keep something else of it meanwhile.
void RegisterAgent::forgetKept()
{
    if (std::exchange(m_isRecalled, false) && isKeptPause(m_pausedSince))
        m_pausedBy.reset();
}

bool RegisterAgent::isKeptPause(const QDateTime& since) const
{
    return since.isValid() && momentOf(m_kept, pausedSinceKey) == since;
}

/// Another owner in between has kept the pause, and people go by what it told since.
bool RegisterAgent::wasKeptPauseEnded() const
{
    return isKeptPause(m_resumed) && epoch() <= m_resumedEpoch + 1;
}

/// Each that takes the register counts on; 0 where nobody else can have it.
qint64 RegisterAgent::epoch() const
{
    return m_options.ownership->lease(name()).value(QStringLiteral("epoch")).toInteger();
}

/// Another drive knows nothing of what was kept of the one before.
void RegisterAgent::noteDrive(const QString& drive)
{
    if (drive.isEmpty() || drive == std::exchange(m_drive, drive))
        return;
    m_shift.close();
    m_shift.forget();
    m_unsentSince = {};
    m_unsentLast = 0;
}

/// A document that has opened the shift says when that was. Else it is taken to be as old as it can be
/// known to be, by the first document of ours in it, the drive's last one, or what was seen before: a report
/// that comes early harms nobody, one that comes late stops the sale.
void RegisterAgent::noteShiftBeginning(const QJsonObject& answer)
{
    const QJsonObject condition = answer.value(QStringLiteral("condition")).toObject();
    noteDrive(condition.value(QStringLiteral("drive")).toString());
    if (!condition.value(QStringLiteral("shiftOpen")).toBool())
        return;
    const QJsonObject shift = answer.value(QStringLiteral("shift")).toObject();
    const QDateTime closed = momentOf(shift, QStringLiteral("closed"));
    QDateTime earliest = now();
    const auto consider = [&](const QDateTime& moment) {
        if (moment.isValid() && moment < earliest && !(closed.isValid() && moment < closed))
            earliest = moment;
    };
    consider(momentOf(shift, QStringLiteral("since")));
    if (!shift.value(QStringLiteral("isOpening")).toBool()) {
        consider(momentOf(shift, QStringLiteral("seen")));
        consider(m_shift.isOpen() ? m_shift.since() : QDateTime());
    }
    m_shift.open(earliest, now(), steady());
}

QJsonObject RegisterAgent::toKeep() const
{
    QJsonObject state;
    if (m_pausedBy) {
        state.insert(pausedByKey, *m_pausedBy);
        state.insert(pausedSinceKey, sale::momentJson(m_pausedSince));
    }
    if (!m_drive.isEmpty())
        state.insert(driveKey, m_drive);
    if (m_shift.isOpen())
        state.insert(shiftSinceKey, sale::momentJson(m_shift.since()));
    if (m_unsentSince.isValid() && !m_isUnsentTold) {
        state.insert(unsentSinceKey, sale::momentJson(m_unsentSince));
        state.insert(unsentLastKey, m_unsentLast);
    }
    return state;
}

/// What cannot be written now is written later; the register goes on by what is known.
void RegisterAgent::keep()
{
    if (m_options.kept == nullptr || !m_isRecalled || !isOwner())
        return;
    const QJsonObject state = toKeep();
    if (state == m_kept)
        return;
    try {
        m_options.kept->keep(name(), state, m_options.ownership->lease(name()));
        m_kept = state;
        m_isKeepingFailed = false;
    } catch (const sale::JournalError& error) {
        if (!std::exchange(m_isKeepingFailed, true))
            qCWarning(rackLog).noquote() << name() << error.what();
    }
}

} // namespace frserver
