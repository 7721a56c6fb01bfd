// What the worker answers, and how it ends.

#include "rack/registeragent.h"

#include "rack/racklog.h"

#include "journalerror.h"

#include <QJsonArray>

#include <utility>

namespace frserver {

namespace {

constexpr qint64 dayMs = 24LL * 3600 * 1000;
const QString needsReview = QStringLiteral("needsReview");

QString textOf(const QJsonObject& json, const char* member)
{
    return json.value(QLatin1String(member)).toString();
}

bool isOfDocuments(const QString& reason)
{
    return isOfPaper(reason) || reason == needsReview || reason == QStringLiteral("journal")
        || reason == QStringLiteral("shiftExpired");
}

/// One that is issued stands in a shift that is open.
bool opensShift(const QString& kind)
{
    static const QStringList kinds{QStringLiteral("sell"), QStringLiteral("sellReturn"),
        QStringLiteral("receipt"), QStringLiteral("cashIn"), QStringLiteral("cashOut"),
        QStringLiteral("openShift")};
    return kinds.contains(kind);
}

} // namespace

void RegisterAgent::take(const QJsonObject& message)
{
    if (!m_request)
        return;
    m_request->heard = steady();
    if (message.contains(QStringLiteral("line")))
        return;
    if (const QJsonValue at = message.value(QStringLiteral("at")); !at.isUndefined()) {
        m_request->isBegun = at.toInt() == m_request->number;
        return;
    }
    if (message.value(QStringLiteral("re")).toInt() != m_request->number) {
        qCWarning(rackLog).noquote() << name() << "an answer to nothing that was asked";
        return;
    }
    const Request request = *std::exchange(m_request, std::nullopt);
    const QJsonObject exchanges = message.value(QStringLiteral("exchanges")).toObject();
    m_exchanges += exchanges.value(QStringLiteral("count")).toInteger();
    m_exchangeMicroseconds += exchanges.value(QStringLiteral("us")).toInteger();
    const QJsonObject failure = message.value(QStringLiteral("failure")).toObject();
    if (failure.isEmpty())
        answered(request, message);
    else
        meetFailure(request, failure);
    tellBegun();
    advance();
}

void RegisterAgent::answered(const Request& request, const QJsonObject& answer)
{
    for (const QJsonValue id : answer.value(QStringLiteral("settled")).toArray()) {
        m_begun.removeAll(id.toString());
        Q_EMIT documentChanged(id.toString());
    }
    if (request.what == QStringLiteral("open"))
        opened(answer);
    else if (request.what == QStringLiteral("make"))
        made(request, answer);
    else if (request.what == QStringLiteral("state"))
        noteCondition(answer);
    else if (request.what == QStringLiteral("settle"))
        Q_EMIT documentChanged(request.id);
    else if (request.what == QStringLiteral("close")) {
        m_isOpen = m_mayHoldPort = false;
        m_mayHoldDrive = !answer.value(QStringLiteral("left")).toBool(true);
    } else if (request.what == QStringLiteral("accept")) {
        m_acceptance.reset();
        unblock();
    }
}

void RegisterAgent::opened(const QJsonObject& answer)
{
    m_isOpen = true;
    m_failedStarts = 0;
    m_hasPrinted = false;
    ++m_connections;
    // The next failure of the line waits longer still, unless something is made in between.
    m_retryAt = 0;
    const QString unknown = textOf(answer, "unknown");
    if (m_waiting && (!isOfDocuments(m_waiting->reason) || m_waiting->reason == needsReview))
        m_waiting.reset();
    if (!unknown.isEmpty())
        block(needsReview, unknown);
    m_identity = answer.value(QStringLiteral("identity")).toObject();
    noteShiftBeginning(answer);
    noteCondition(answer);
}

void RegisterAgent::noteCondition(const QJsonObject& answer)
{
    m_condition = answer.value(QStringLiteral("condition")).toObject();
    m_conditionTime = now();
    noteUnsent();
    const QJsonValue told = m_condition.value(QStringLiteral("shiftOpen"));
    if (!told.isBool())
        return m_shift.forget();
    const bool isShiftOpen = told.toBool();
    // Somebody at the register itself, in the time since it was asked last.
    if (isShiftOpen)
        m_shift.open(m_shift.isOpen() ? m_shift.since() : now(), now(), steady());
    else {
        m_shift.close();
        // Closed at the register itself.
        if (m_waiting && m_waiting->reason == QStringLiteral("shiftExpired"))
            unblock();
    }
}

void RegisterAgent::noteUnsent()
{
    if (!m_condition.value(QStringLiteral("unsent")).isDouble())
        return;
    const qint64 unsent = m_condition.value(QStringLiteral("unsent")).toInteger();
    const qint64 last = m_condition.value(QStringLiteral("lastDocument")).toInteger();
    // Told over HEX, in the register's own time.
    const QDateTime told
        = QDateTime::fromString(m_condition.value(QStringLiteral("unsentSince")).toString(), Qt::ISODate);
    // All that waited when it was seen first has gone; what waits now came later.
    const bool isOfOthers = m_unsentLast > 0 && last - unsent >= m_unsentLast;
    m_isUnsentTold = told.isValid();
    if (unsent <= 0)
        m_unsentSince = {};
    else if (told.isValid())
        m_unsentSince = QDateTime(told.date(), told.time(), m_settings.timeZone).toUTC();
    else if (!m_unsentSince.isValid() || isOfOthers) {
        m_unsentSince = now();
        m_unsentLast = last;
    }
}

void RegisterAgent::made(const Request& request, const QJsonObject& answer)
{
    m_options.deaths->remove(request.id);
    const QString held = textOf(answer, "held");
    const QString kind = textOf(answer, "kind");
    if (held.isEmpty())
        m_options.failures->remove(request.id);
    m_hasPrinted = m_hasPrinted || textOf(answer, "state") == QStringLiteral("issued");
    noteShift(request, answer);
    if (request.isOfShift)
        noteZReport(answer);
    const bool isGivenUp = refuseFailing(request.id, held, textOf(answer, "text"));
    const QString hold = isGivenUp ? QString() : !held.isEmpty() ? held : isOfPaper(kind) ? kind : QString();
    const bool saysNothingOfPaper = endClaim(request.id, hold);
    if (!hold.isEmpty())
        meetHold(hold, textOf(answer, "text"));
    else if (!saysNothingOfPaper)
        unblock();
    // What was begun and could not be settled is settled by the next start.
    if (kind == QStringLiteral("line") || textOf(answer, "state") == QStringLiteral("running"))
        m_isOpen = false;
    Q_EMIT documentChanged(request.id);
}

void RegisterAgent::meetHold(const QString& reason, const QString& text)
{
    m_waiting = Waiting{reason, text};
    // The report that it waits for comes at once, and nothing else before that.
    if (!isShiftAwaited())
        block(reason, text);
    giveUpClaim();
    // The line, the port, the register or its drive: all of that is looked at anew.
    if (!isOfDocuments(reason))
        m_isOpen = false;
}

void RegisterAgent::noteShift(const Request& request, const QJsonObject& answer)
{
    const QString kind = textOf(answer, "kind");
    const bool isOfShift
        = request.kind == QStringLiteral("zReport") || request.kind == QStringLiteral("openShift");
    const bool isIssued = textOf(answer, "state") == QStringLiteral("issued");
    if (kind == QStringLiteral("shiftExpired"))
        m_shift.open(now().addMSecs(-dayMs), now(), steady());
    else if (isIssued && request.kind == QStringLiteral("zReport"))
        m_shift.close();
    else if (isIssued && !m_shift.isOpen() && opensShift(request.kind))
        m_shift.open(now(), now(), steady());
    if (isOfShift || kind == QStringLiteral("shiftClosed") || kind == QStringLiteral("shiftExpired"))
        m_isConditionWanted = !isIssued;
    else if (!isIssued)
        m_conditionDue = 0;
}

void RegisterAgent::noteZReport(const QJsonObject& answer)
{
    const bool isIssued = textOf(answer, "state") == QStringLiteral("issued");
    m_zReportFailure = isIssued ? QString() : textOf(answer, "text");
    if (isIssued)
        m_zReport.clear();
    else
        qCWarning(rackLog).noquote() << name() << "the shift is not closed:" << m_zReportFailure;
}

void RegisterAgent::meetFailure(const Request& request, const QJsonObject& failure)
{
    const QString reason = textOf(failure, "reason");
    qCWarning(rackLog).noquote() << name() << request.what << reason << textOf(failure, "text");
    // Once: what cannot be accepted is told, and wants another word.
    if (request.what == QStringLiteral("accept"))
        m_acceptance.reset();
    m_isOpen = false;
    if (request.what == QStringLiteral("open") && isUnexplained(reason))
        giveUpBegun();
    if (request.what == QStringLiteral("close"))
        m_worker->kill();
    else
        block(reason, textOf(failure, "text"));
    if (!request.id.isEmpty())
        Q_EMIT documentChanged(request.id);
}

/// They are settled before a start that may fail all the same, or die.
void RegisterAgent::noteBegun()
{
    try {
        for (const sale::StoredDocument& document :
            m_store.find({.states = {sale::DocumentState::Running, sale::DocumentState::Unknown},
            .registerName = name()})) {
            if (document.isToBeAsked())
                m_begun.append(document.request.id);
        }
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << error.what();
    }
}

void RegisterAgent::tellBegun()
{
    for (const QString& id : std::exchange(m_begun, {}))
        Q_EMIT documentChanged(id);
}

/// One that was begun is settled, and not begun again by itself.
void RegisterAgent::noteDeath(const QString& id)
{
    try {
        const std::optional<sale::StoredDocument> document = m_store.findId(id);
        if (document && document->state == sale::DocumentState::Queued)
            ++(*m_options.deaths)[id];
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << error.what();
    }
}

void RegisterAgent::workerEnded(const QString& how)
{
    m_isAlive = m_isOpen = m_mayHoldPort = false;
    const bool isWanted = std::exchange(m_endingSince, std::nullopt).has_value();
    const std::optional<Request> broken = std::exchange(m_request, std::nullopt);
    if (!isWanted) {
        qCWarning(rackLog).noquote() << name() << "the worker is gone:" << how;
        block(QStringLiteral("worker"), how);
        if (broken && broken->what == QStringLiteral("open"))
            giveUpBegun();
    }
    giveUpClaim();
    // What was given to one that had ended is not what it died of.
    if (broken && broken->what == QStringLiteral("make") && broken->isBegun && !isWanted)
        noteDeath(broken->id);
    if (broken && !broken->id.isEmpty())
        Q_EMIT documentChanged(broken->id);
    tellBegun();
    advance();
}

} // namespace frserver
