#include "sqlstore.h"

#include "idconflict.h"
#include "journalerror.h"
#include "journalfault.h"
#include "possiblenumber.h"
#include "storedjson.h"
#include "storedtime.h"

namespace sale {

namespace {

/// Empty for what leaves no trace there.
QString driveOf(const AttemptStart& start)
{
    return start.markBefore.value(QStringLiteral("drive")).toString();
}

/// A clock that was put back does not tell how long a document has waited: it may be far too long.
bool isTimeOver(const StoredDocument& document, const QDateTime& now)
{
    const QDateTime& before = document.request.startBefore;
    return before.isValid() && (before < now || document.queued > now.addSecs(mostSecondsBack));
}

/// A span begins when the document is accepted: whoever posts it has a clock of its own.
QString deadlineOf(const DocumentRequest& request, const QString& now)
{
    return storedTime(
        request.startWithin ? timeFromStored(now).addDuration(*request.startWithin) : request.startBefore);
}

QVariant numberOrNull(quint32 number)
{
    return number == 0 ? QVariant(QMetaType::fromType<qint64>()) : QVariant(qint64{number});
}

QVariant nullIfEmpty(const QString& text)
{
    return text.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(text);
}

} // namespace

JournalError SqlStore::wrongOrder(const QString& id, const QString& why) const
{
    return JournalError(QStringLiteral("journal %1: the document %2 %3").arg(place(), id, why));
}

QDateTime SqlStore::timeNow() const
{
    return timeFromStored(now());
}

void SqlStore::requireHere() const
{
    if (isMoved())
        throw movedJournal(place());
}

StoredDocument SqlStore::accept(const DocumentRequest& request, const Condition& condition)
{
    StoredDocument taken;
    m_sql.together([&] { taken = take(request, condition); });
    if (taken.attemptCount > 0)
        addAttempts(taken);
    return taken;
}

StoredDocument SqlStore::take(const DocumentRequest& request, const Condition& condition)
{
    // Whatever the condition finds of the sale's other returns holds still until the end.
    if (!request.returnOf.isEmpty())
        holdReturns(request.returnOf);
    const std::optional<StoredDocument> known = held(request.id);
    if (known && known->state != DocumentState::NotIssued) {
        if (known->digest != bodyDigest(request.body) || known->request.returnOf != request.returnOf)
            throw IdConflict(request.id, known->accepted);
        return *known;
    }
    if (condition)
        condition();
    return known ? renew(*known, request) : insert(request);
}

StoredDocument SqlStore::insert(const DocumentRequest& request)
{
    const QString moment = now();
    const QString digest = QString::fromLatin1(bodyDigest(request.body));
    writeId(request.id, digest, moment);
    const QList<StoredDocument> inserted = documents(
        QStringLiteral(
            "INSERT INTO documents (id, register, kind, body, digest, state, accepted, start_before, "
            "queued, return_of, pool, paperless) VALUES (?, ?, ?, ?, ?, 'queued', ?, ?, ?, ?, ?, ?) "
            "RETURNING %1")
            .arg(columns()),
        {request.id, neverNull(request.registerName), request.kind,
            neverNull(QString::fromUtf8(request.body)), digest, moment, deadlineOf(request, moment), moment,
            nullIfEmpty(request.returnOf), neverNull(request.pool), request.isPaperless});
    writeGoods(request);
    return inserted.constFirst();
}

StoredDocument SqlStore::renew(const StoredDocument& known, const DocumentRequest& request)
{
    const QString moment = now();
    const QString digest = QString::fromLatin1(bodyDigest(request.body));
    const QString knownDigest = QString::fromLatin1(known.digest);
    if (digest != knownDigest) {
        const SqlKey key = keyOf(known);
        writeId(request.id, digest, storedTime(known.accepted));
        m_sql.execute(QStringLiteral("UPDATE attempts SET body = ?, digest = ? WHERE %1 AND digest IS NULL")
                          .arg(key.condition()),
            QVariantList{neverNull(QString::fromUtf8(known.request.body)), knownDigest} + key.values);
    }
    update(request.id,
        QStringLiteral("register = ?, kind = ?, body = ?, digest = ?, state = 'queued', "
                       "reason = '', start_before = ?, settled = NULL, resolved_by = NULL, "
                       "resolved_note = NULL, anonymised = NULL, queued = ?, return_of = ?, "
                       "pool = ?, paperless = ?, claimed = NULL"),
        {neverNull(request.registerName), request.kind, neverNull(QString::fromUtf8(request.body)), digest,
            deadlineOf(request, moment), moment, nullIfEmpty(request.returnOf), neverNull(request.pool),
            request.isPaperless});
    m_sql.execute(QStringLiteral("DELETE FROM goods WHERE id = ?"), {request.id});
    writeGoods(request);
    return documentAt(keyOf(request.id)).value();
}

void SqlStore::writeGoods(const DocumentRequest& request)
{
    for (const QString& mark : request.goods)
        insertInto(QStringLiteral("goods"), request.id, {QStringLiteral("mark")}, {mark});
}

std::optional<int> SqlStore::begin(const QString& id, const AttemptStart& attemptStart)
{
    std::optional<int> attempt;
    m_sql.together([&] {
        requireOwner(driveOf(attemptStart));
        attempt = start(heldExisting(id), attemptStart);
    });
    return attempt;
}

std::optional<int> SqlStore::acceptAndBegin(const DocumentRequest& request, const AttemptStart& attemptStart)
{
    std::optional<int> attempt;
    m_sql.together([&] {
        requireOwner(driveOf(attemptStart));
        attempt = start(take(request, {}), attemptStart);
    });
    return attempt;
}

std::optional<int> SqlStore::start(const StoredDocument& known, const AttemptStart& start)
{
    const QString& id = known.request.id;
    if (known.state != DocumentState::Queued)
        throw wrongOrder(id, QStringLiteral("is done or under way"));
    if (!start.registerName.isEmpty() && known.request.registerName != start.registerName)
        throw wrongOrder(id, QStringLiteral("is of the register %1").arg(known.request.registerName));
    if (!start.digest.isEmpty() && (known.digest != start.digest || known.request.returnOf != start.returnOf))
        throw wrongOrder(id, QStringLiteral("was withdrawn and posted anew"));
    // Whoever begins it without a name would leave it without a register.
    if (known.request.registerName.isEmpty() && !known.request.pool.isEmpty())
        throw wrongOrder(id, QStringLiteral("waits in the pool %1").arg(known.request.pool));
    // One moment: what is kept as its beginning is not behind the time until which it may be begun.
    const QString moment = now();
    if (isTimeOver(known, timeFromStored(moment))) {
        end(id, StateReason::Expired, moment);
        return std::nullopt;
    }
    const int attempt = known.attemptCount + 1;
    const SqlKey begun = origin();
    const qint64 sequence = insertInto(QStringLiteral("attempts"), id,
        QStringList{QStringLiteral("number"), QStringLiteral("begun"), QStringLiteral("mark_before"),
            QStringLiteral("movement"), QStringLiteral("marks")}
            + begun.columns,
        QVariantList{
            attempt, moment, wholeJson(start.markBefore), wholeJson(start.movement), storedJson(start.marks)}
            + begun.values);
    updateBegun(id, attempt, sequence, QStringLiteral("state = 'running', begun = ?, drive = ?"),
        {moment, neverNull(driveOf(start))});
    return attempt;
}

void SqlStore::note(const QString& id, int attempt, const AttemptNote& note)
{
    m_sql.together([&] {
        requireOwner({});
        heldExisting(id);
        updateAttempt(id, attempt,
            QStringLiteral("mark_after = coalesce(?, mark_after), failure = coalesce(?, failure), "
                           "warnings = coalesce(?, warnings)"),
            {storedJson(note.markAfter), storedJson(note.failure), storedJson(note.warnings)});
    });
}

void SqlStore::refuseWrongEnding(const StoredDocument& known, int attempt, const DocumentEnding& ending)
{
    const QString& id = known.request.id;
    if (attempt != known.attemptCount)
        throw wrongOrder(id, QStringLiteral("was begun anew by another program"));
    if (known.state == DocumentState::Issued)
        throw wrongOrder(id, QStringLiteral("is issued"));
    if (ending.by.isEmpty())
        return;
    if (known.state != DocumentState::Unknown
        && !(ending.isOutOfReach && known.state == DocumentState::Running))
        throw wrongOrder(id, QStringLiteral("is %1, not unknown").arg(stateName(known.state)));
    if (ending.documentNumber != 0)
        requirePossibleNumber(*this, known, ending.documentNumber, ending.reached);
}

void SqlStore::settle(const QString& id, int attempt, const DocumentEnding& ending)
{
    m_sql.together([&] {
        requireOwner({});
        StoredDocument known = heldExisting(id);
        if (!ending.isAsked && (known.state != DocumentState::Running || known.attemptCount != attempt))
            return;
        if (known.state == DocumentState::Issued && ending.state == DocumentState::Issued
            && known.documentNumber == ending.documentNumber && ending.by.isEmpty())
            return;
        // They tell how far the drive had come before.
        if (!ending.by.isEmpty())
            addAttempts(known);
        // Meant: also of one that was queued anew since. What its register has of it is not made once more.
        refuseWrongEnding(known, attempt, ending);
        const bool isOfRegister = ending.state == DocumentState::NotIssued && ending.by.isEmpty();
        endAttempt(id, attempt, isOfRegister ? notIssued(known, ending) : ending);
    });
}

void SqlStore::endAttempt(const QString& id, int attempt, const DocumentEnding& ending)
{
    const QString moment = now();
    const QVariant number = numberOrNull(ending.documentNumber);
    const bool waits = ending.state == DocumentState::NotIssued && ending.waitsAgain;
    update(id,
        QStringLiteral("state = ?, reason = ?, settled = ?, document = ?, number_read = ?, times = ?, "
                       "resolved_by = ?, resolved_note = ?"),
        {stateName(waits ? DocumentState::Queued : ending.state),
            neverNull(waits ? QString() : reasonName(ending.reason)), nullIfEmpty(waits ? QString() : moment),
            number, ending.isNumberRead, ending.state == DocumentState::Issued ? ending.times : 0, ending.by,
            ending.note});
    if (!ending.isAsked)
        return;
    updateAttempt(id, attempt,
        QStringLiteral("ended = ?, verdict = ?, document = ?, mark_after = coalesce(?, mark_after), "
                       "register_time = coalesce(?, register_time)"),
        {moment, stateName(ending.state), number, storedJson(ending.markAfter),
            nullIfEmpty(ending.registerTime.toString(Qt::ISODate))});
}

} // namespace sale
