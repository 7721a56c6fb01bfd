#include "sqlitestore.h"

#include "idconflict.h"
#include "journalerror.h"
#include "storedtime.h"

#include <QJsonDocument>

namespace sale {

namespace {

/// Null for what is empty, so that a note leaves what was noted before.
QVariant storedJson(const QJsonObject& json)
{
    return json.isEmpty() ? QVariant(QMetaType::fromType<QString>())
                          : QVariant(QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact)));
}

QVariant storedJson(const QJsonArray& json)
{
    return json.isEmpty() ? QVariant(QMetaType::fromType<QString>())
                          : QVariant(QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact)));
}

QString neverNull(const QString& text)
{
    return text.isNull() ? QString::fromLatin1("") : text;
}

QString wholeJson(const QJsonObject& json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

QVariant numberOrNull(quint32 number)
{
    return number == 0 ? QVariant(QMetaType::fromType<qint64>()) : QVariant(qint64{number});
}

JournalError wrongOrder(const SqliteStore& store, const QString& id, const QString& why)
{
    return JournalError(QStringLiteral("journal %1: the document %2 %3").arg(store.fileName(), id, why));
}

} // namespace

SqliteStore::SqliteStore(const QString& fileName, int patienceMs)
    : m_connection(fileName, patienceMs)
{
    makeTables();
    takeOverFrom(QStringLiteral("main"), QString::fromLatin1(""));
}

StoredDocument SqliteStore::accept(const DocumentRequest& request)
{
    m_connection.together([&] {
        const std::optional<StoredDocument> known = findId(request.id);
        if (!known)
            insert(request);
        else if (known->state == DocumentState::NotIssued)
            renew(*known, request);
        else if (known->digest != bodyDigest(request.body))
            throw IdConflict(request.id, known->accepted);
    });
    return findId(request.id).value();
}

void SqliteStore::insert(const DocumentRequest& request)
{
    m_connection.execute(
        QStringLiteral(
            "INSERT INTO documents (id, register, kind, body, digest, state, accepted, start_before) "
            "VALUES (?, ?, ?, ?, ?, 'queued', ?, ?)"),
        {request.id, neverNull(request.registerName), request.kind,
            neverNull(QString::fromUtf8(request.body)), QString::fromLatin1(bodyDigest(request.body)),
            storedNow(), storedTime(request.startBefore)});
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
                       "resolved_note = NULL, anonymised = NULL WHERE id = ?"),
        {neverNull(request.registerName), request.kind, neverNull(QString::fromUtf8(request.body)),
            QString::fromLatin1(digest), storedTime(request.startBefore), request.id});
    writeGoods(request);
}

void SqliteStore::writeGoods(const DocumentRequest& request)
{
    m_connection.execute(QStringLiteral("DELETE FROM goods WHERE id = ?"), {request.id});
    for (const QString& mark : request.goods)
        m_connection.execute(
            QStringLiteral("INSERT INTO goods (mark, id) VALUES (?, ?)"), {mark, request.id});
}

std::optional<int> SqliteStore::begin(const QString& id, const AttemptStart& start)
{
    std::optional<int> attempt;
    m_connection.together([&] {
        const std::optional<StoredDocument> known = findId(id);
        if (!known || known->state != DocumentState::Queued)
            throw wrongOrder(*this, id, QStringLiteral("is done or under way"));
        if (known->request.startBefore.isValid()
            && known->request.startBefore < timeFromStored(storedNow())) {
            expire(id);
            return;
        }
        attempt = known->attemptCount + 1;
        m_connection.execute(
            QStringLiteral(
                "INSERT INTO attempts (id, number, begun, mark_before, movement) VALUES (?, ?, ?, ?, ?)"),
            {id, *attempt, storedNow(), wholeJson(start.markBefore), wholeJson(start.movement)});
        m_connection.execute(
            QStringLiteral("UPDATE documents SET state = 'running', begun = ?, attempts = ?, drive = ?, "
                           "document = NULL, last_attempt = last_insert_rowid() WHERE id = ?"),
            {storedNow(), *attempt, neverNull(start.markBefore.value(QStringLiteral("drive")).toString()),
                id});
    });
    return attempt;
}

void SqliteStore::expire(const QString& id)
{
    m_connection.execute(
        QStringLiteral(
            "UPDATE documents SET state = 'notIssued', reason = 'expired', settled = ? WHERE id = ?"),
        {storedNow(), id});
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
        throw wrongOrder(*this, id, QStringLiteral("was begun anew by another program"));
    if (known.state == DocumentState::Issued)
        throw wrongOrder(*this, id, QStringLiteral("is issued"));
    if (ending.by.isEmpty())
        return;
    if (known.state != DocumentState::Unknown)
        throw wrongOrder(*this, id, QStringLiteral("is %1, not unknown").arg(stateName(known.state)));
    if (ending.documentNumber == 0)
        return;
    const QList<StoredDocument> others
        = find({.drive = known.drive, .documentNumber = ending.documentNumber, .withAttempts = false});
    if (!others.isEmpty())
        throw wrongOrder(*this, others.constFirst().request.id,
            QStringLiteral("is number %1 of fiscal drive %2").arg(ending.documentNumber).arg(known.drive));
}

void SqliteStore::settle(const QString& id, int attempt, const DocumentEnding& ending)
{
    m_connection.together([&] {
        const std::optional<StoredDocument> known = findId(id);
        if (!known)
            throw wrongOrder(*this, id, QStringLiteral("is not there"));
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
    m_connection.execute(
        QStringLiteral(
            "UPDATE documents SET state = ?, reason = ?, settled = ?, document = ?, number_read = ?, "
            "times = ?, resolved_by = ?, resolved_note = ? WHERE id = ?"),
        {stateName(ending.state), neverNull(reasonName(ending.reason)), storedNow(), number,
            ending.isNumberRead, ending.state == DocumentState::Issued ? ending.times : 0, ending.by,
            ending.note, id});
    m_connection.execute(QStringLiteral("UPDATE attempts SET ended = ?, verdict = ?, document = ?, "
                                        "mark_after = coalesce(?, mark_after) WHERE id = ? AND number = ?"),
        {storedNow(), stateName(ending.state), number, storedJson(ending.markAfter), id, attempt});
}

} // namespace sale
