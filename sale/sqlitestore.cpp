#include "sqlitestore.h"

#include "idconflict.h"
#include "journalerror.h"
#include "storedjson.h"
#include "storedtime.h"

#include <QJsonDocument>

namespace sale {

namespace {

QString neverNull(const QString& text)
{
    return text.isNull() ? QString::fromLatin1("") : text;
}

QString wholeJson(const QJsonObject& json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

/// A clock that was put back does not tell how long a document has waited: it may be far too long.
bool isTimeOver(const StoredDocument& document, const QDateTime& now)
{
    const QDateTime& before = document.request.startBefore;
    return before.isValid() && (before < now || document.queued > now.addSecs(mostSecondsBack));
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

SqliteStore::SqliteStore(const QString& fileName, int patienceMs)
    : m_connection(fileName, patienceMs)
{
    makeTables();
    takeOverFrom(QStringLiteral("main"), QString::fromLatin1(""));
}

JournalError SqliteStore::wrongOrder(const QString& id, const QString& why) const
{
    return JournalError(QStringLiteral("journal %1: the document %2 %3").arg(fileName(), id, why));
}

StoredDocument SqliteStore::accept(const DocumentRequest& request, const Condition& condition)
{
    m_connection.together([&] { take(request, condition); });
    return findId(request.id).value();
}

void SqliteStore::take(const DocumentRequest& request, const Condition& condition)
{
    const std::optional<StoredDocument> known = findId(request.id);
    if (known && known->state != DocumentState::NotIssued) {
        if (known->digest != bodyDigest(request.body) || known->request.returnOf != request.returnOf)
            throw IdConflict(request.id, known->accepted);
        return;
    }
    if (condition)
        condition();
    if (known)
        renew(*known, request);
    else
        insert(request);
}

void SqliteStore::insert(const DocumentRequest& request)
{
    const QString now = storedNow();
    m_connection.execute(
        QStringLiteral(
            "INSERT INTO documents (id, register, kind, body, digest, state, accepted, start_before, "
            "queued, return_of) VALUES (?, ?, ?, ?, ?, 'queued', ?, ?, ?, ?)"),
        {request.id, neverNull(request.registerName), request.kind,
            neverNull(QString::fromUtf8(request.body)), QString::fromLatin1(bodyDigest(request.body)), now,
            storedTime(request.startBefore), now, nullIfEmpty(request.returnOf)});
    writeGoods(request);
}

void SqliteStore::renew(const StoredDocument& known, const DocumentRequest& request)
{
    const QByteArray digest = bodyDigest(request.body);
    if (digest != known.digest)
        m_connection.execute(
            QStringLiteral("UPDATE attempts SET body = ?, digest = ? WHERE id = ? AND digest IS NULL"),
            {neverNull(QString::fromUtf8(known.request.body)), QString::fromLatin1(known.digest),
                request.id});
    m_connection.execute(
        QStringLiteral("UPDATE documents SET register = ?, kind = ?, body = ?, digest = ?, state = 'queued', "
                       "reason = '', start_before = ?, settled = NULL, resolved_by = NULL, "
                       "resolved_note = NULL, anonymised = NULL, queued = ?, return_of = ? WHERE id = ?"),
        {neverNull(request.registerName), request.kind, neverNull(QString::fromUtf8(request.body)),
            QString::fromLatin1(digest), storedTime(request.startBefore), storedNow(),
            nullIfEmpty(request.returnOf), request.id});
    writeGoods(request);
}

void SqliteStore::writeGoods(const DocumentRequest& request)
{
    m_connection.execute(QStringLiteral("DELETE FROM goods WHERE id = ?"), {request.id});
    for (const QString& mark : request.goods)
        m_connection.execute(
            QStringLiteral("INSERT INTO goods (mark, id) VALUES (?, ?)"), {mark, request.id});
}

std::optional<int> SqliteStore::begin(const QString& id, const AttemptStart& attemptStart)
{
    std::optional<int> attempt;
    m_connection.together([&] { attempt = start(id, attemptStart); });
    return attempt;
}

std::optional<int> SqliteStore::acceptAndBegin(
    const DocumentRequest& request, const AttemptStart& attemptStart)
{
    std::optional<int> attempt;
    m_connection.together([&] {
        take(request, {});
        attempt = start(request.id, attemptStart);
    });
    return attempt;
}

std::optional<int> SqliteStore::start(const QString& id, const AttemptStart& start)
{
    const std::optional<StoredDocument> known = findId(id);
    if (!known || known->state != DocumentState::Queued)
        throw wrongOrder(id, QStringLiteral("is done or under way"));
    if (!start.registerName.isEmpty() && known->request.registerName != start.registerName)
        throw wrongOrder(id, QStringLiteral("is of the register %1").arg(known->request.registerName));
    if (isTimeOver(*known, timeFromStored(storedNow()))) {
        end(id, StateReason::Expired);
        return std::nullopt;
    }
    const int attempt = known->attemptCount + 1;
    m_connection.execute(
        QStringLiteral(
            "INSERT INTO attempts (id, number, begun, mark_before, movement) VALUES (?, ?, ?, ?, ?)"),
        {id, attempt, storedNow(), wholeJson(start.markBefore), wholeJson(start.movement)});
    m_connection.execute(
        QStringLiteral("UPDATE documents SET state = 'running', begun = ?, attempts = ?, drive = ?, "
                       "document = NULL, last_attempt = last_insert_rowid() WHERE id = ?"),
        {storedNow(), attempt, neverNull(start.markBefore.value(QStringLiteral("drive")).toString()), id});
    return attempt;
}

void SqliteStore::note(const QString& id, int attempt, const AttemptNote& note)
{
    m_connection.execute(
        QStringLiteral("UPDATE attempts SET mark_after = coalesce(?, mark_after), failure = coalesce(?, "
                       "failure), warnings = coalesce(?, warnings) WHERE id = ? AND number = ?"),
        {storedJson(note.markAfter), storedJson(note.failure), storedJson(note.warnings), id, attempt});
}

void SqliteStore::refuseWrongEnding(
    const StoredDocument& known, int attempt, const DocumentEnding& ending) const
{
    const QString& id = known.request.id;
    if (attempt != known.attemptCount)
        throw wrongOrder(id, QStringLiteral("was begun anew by another program"));
    if (known.state == DocumentState::Issued)
        throw wrongOrder(id, QStringLiteral("is issued"));
    if (ending.by.isEmpty())
        return;
    if (known.state != DocumentState::Unknown)
        throw wrongOrder(id, QStringLiteral("is %1, not unknown").arg(stateName(known.state)));
    if (ending.documentNumber == 0)
        return;
    const QList<StoredDocument> others
        = find({.drive = known.drive, .documentNumber = ending.documentNumber, .withAttempts = false});
    if (!others.isEmpty())
        throw wrongOrder(others.constFirst().request.id,
            QStringLiteral("is number %1 of fiscal drive %2").arg(ending.documentNumber).arg(known.drive));
}

void SqliteStore::settle(const QString& id, int attempt, const DocumentEnding& ending)
{
    m_connection.together([&] {
        const std::optional<StoredDocument> known = findId(id);
        if (!known)
            throw wrongOrder(id, QStringLiteral("is not there"));
        if (known->state == DocumentState::Issued && ending.state == DocumentState::Issued
            && known->documentNumber == ending.documentNumber && ending.by.isEmpty())
            return;
        refuseWrongEnding(*known, attempt, ending);
        endAttempt(id, attempt, ending);
    });
}

void SqliteStore::endAttempt(const QString& id, int attempt, const DocumentEnding& ending)
{
    const QVariant number = numberOrNull(ending.documentNumber);
    const bool waits = ending.state == DocumentState::NotIssued && ending.waitsAgain;
    m_connection.execute(
        QStringLiteral(
            "UPDATE documents SET state = ?, reason = ?, settled = ?, document = ?, number_read = ?, "
            "times = ?, resolved_by = ?, resolved_note = ? WHERE id = ?"),
        {stateName(waits ? DocumentState::Queued : ending.state),
            neverNull(waits ? QString() : reasonName(ending.reason)),
            nullIfEmpty(waits ? QString() : storedNow()), number, ending.isNumberRead,
            ending.state == DocumentState::Issued ? ending.times : 0, ending.by, ending.note, id});
    m_connection.execute(QStringLiteral("UPDATE attempts SET ended = ?, verdict = ?, document = ?, "
                                        "mark_after = coalesce(?, mark_after) WHERE id = ? AND number = ?"),
        {storedNow(), stateName(ending.state), number, storedJson(ending.markAfter), id, attempt});
}

} // namespace sale
