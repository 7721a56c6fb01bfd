// What is told of the register.

#include "rack/registeragent.h"

#include "documentanswer.h"

#include <QJsonArray>

#include <cstdlib>

namespace frserver {

namespace {

/// Seconds that a register's clock may differ before that is told; from 300 on it refuses to be started.
constexpr int clockDifference = 60;

/// That the OFD is silent is told by the documents that it has not got.
struct DriveWarning
{
    int bit;
    const char* text;
};
constexpr DriveWarning driveWarnings[]
    = {{1, "Требуется срочная замена ФН"}, {2, "Ресурс ФН исчерпывается"}, {4, "Память ФН переполнена"}};

QJsonObject alarm(const char* kind, const QString& text)
{
    return {{QStringLiteral("kind"), QLatin1String(kind)}, {QStringLiteral("text"), text}};
}

} // namespace

QString RegisterAgent::state() const
{
    if (m_isStopped || m_isStopping)
        return m_isStopped ? QStringLiteral("stopped") : QStringLiteral("stopping");
    if (m_pausedBy)
        return m_mayHoldPort || m_request ? QStringLiteral("pausing") : QStringLiteral("paused");
    // Also while it is tried again.
    if (m_waiting)
        return QStringLiteral("waiting");
    if (m_isStandby)
        return QStringLiteral("standby");
    if (!m_isOpen)
        return QStringLiteral("starting");
    return isMaking() ? QStringLiteral("making") : QStringLiteral("ready");
}

QJsonArray RegisterAgent::alarms() const
{
    QJsonArray alarms;
    // Whoever works it knows better.
    if (m_isStandby)
        return alarms;
    const bool isDue = m_shift.isEndDue(now(), steady());
    if (isDue && (m_pausedBy || !m_isOpen || m_waiting))
        alarms.append(alarm("shiftEnds", QStringLiteral("Z-отчёт пора снять, но касса сейчас недоступна")));
    if (isDue && !m_settings.hasCashier())
        alarms.append(
            alarm("shiftEnds", QStringLiteral("Z-отчёт пора снять, а кассир в настройках не указан")));
    if (isDue && !m_zReportFailure.isEmpty())
        alarms.append(alarm("zReport", m_zReportFailure));
    for (const DriveWarning& warning : driveWarnings) {
        if ((m_condition.value(QStringLiteral("driveWarnings")).toInt() & warning.bit) != 0)
            alarms.append(alarm("drive", QString::fromUtf8(warning.text)));
    }
    const int difference = m_condition.value(QStringLiteral("clockDifference")).toInt();
    if (std::abs(difference) >= clockDifference)
        alarms.append(alarm(
            "clock", QStringLiteral("Часы кассы расходятся с часами компьютера на %1 с").arg(difference)));
    return alarms;
}

qint64 RegisterAgent::ageOf(const QDateTime& moment) const
{
    return std::max<qint64>(0, moment.secsTo(now()));
}

/// Neither protocol tells of paper: a document that was made has found some, one that waits for it has not.
QJsonValue RegisterAgent::paper() const
{
    if (m_waiting && m_waiting->reason == QStringLiteral("paper"))
        return false;
    return m_hasPrinted ? QJsonValue(true) : QJsonValue();
}

QJsonValue RegisterAgent::condition() const
{
    if (m_condition.isEmpty())
        return {};
    QJsonObject condition = m_condition;
    condition.insert(QStringLiteral("paper"), paper());
    return condition;
}

QJsonObject RegisterAgent::view() const
{
    const QJsonObject owner = m_options.ownership->owner(name());
    return {{QStringLiteral("state"), state()}, {QStringLiteral("since"), sale::momentJson(m_since)},
        {QStringLiteral("stateAge"), ageOf(m_since)},
        {QStringLiteral("waiting"), m_waiting ? QJsonValue(m_waiting->reason) : QJsonValue()},
        {QStringLiteral("waitingText"), m_waiting ? sale::textOrNull(m_waiting->text) : QJsonValue()},
        {QStringLiteral("owner"), owner.isEmpty() ? QJsonValue() : QJsonValue(owner)},
        {QStringLiteral("pausedBy"), m_pausedBy ? QJsonValue(*m_pausedBy) : QJsonValue()},
        {QStringLiteral("pausedSince"), m_pausedBy ? sale::momentJson(m_pausedSince) : QJsonValue()},
        {QStringLiteral("document"), isMaking() ? QJsonValue(m_request->id) : QJsonValue()},
        {QStringLiteral("identity"), m_identity.isEmpty() ? QJsonValue() : QJsonValue(m_identity)},
        {QStringLiteral("condition"), condition()},
        {QStringLiteral("conditionAge"),
            m_conditionTime.isValid() ? QJsonValue(ageOf(m_conditionTime)) : QJsonValue()},
        {QStringLiteral("unsentSince"), sale::momentJson(m_unsentSince)},
        {QStringLiteral("shift"),
            QJsonObject{{QStringLiteral("open"), m_shift.told() ? QJsonValue(*m_shift.told()) : QJsonValue()},
                {QStringLiteral("since"),
                    m_shift.told() ? sale::momentJson(m_shift.since()) : QJsonValue()}}},
        {QStringLiteral("alarms"), alarms()}, {QStringLiteral("workerStarts"), m_workerStarts},
        {QStringLiteral("connections"), m_connections},
        {QStringLiteral("exchanges"),
            QJsonObject{{QStringLiteral("count"), m_exchanges},
                {QStringLiteral("seconds"), static_cast<double>(m_exchangeMicroseconds) / 1'000'000}}}};
}

void RegisterAgent::announce()
{
    const QString told = state() + (m_waiting ? m_waiting->reason : QString());
    if (told != std::exchange(m_told, told))
        m_since = now();
    keep();
    Q_EMIT changed();
}

} // namespace frserver
