#include "sqlitestore.h"

#include "documentid.h"
#include "storedjson.h"
#include "storedtime.h"

#include <QSqlQuery>

namespace sale {

namespace {

// In the words of the index of what is not finished.
const QString overdue
    = QStringLiteral("FROM documents WHERE state = 'queued' AND state IN ('queued', 'running', 'unknown') "
                     "AND (start_before < ? OR (start_before IS NOT NULL AND queued > ?))");

} // namespace

StoredDocument SqliteStore::existing(const QString& id) const
{
    const std::optional<StoredDocument> known = findId(id);
    if (!known)
        throw wrongOrder(id, QStringLiteral("is not there"));
    return *known;
}

StoredDocument SqliteStore::ifQueued(
    const QString& id, const std::function<void(const StoredDocument&)>& work)
{
    m_connection.together([&] {
        const StoredDocument known = existing(id);
        if (known.state == DocumentState::Queued)
            work(known);
    });
    return existing(id);
}

void SqliteStore::end(const QString& id, StateReason reason)
{
    m_connection.execute(
        QStringLiteral("UPDATE documents SET state = 'notIssued', reason = ?, settled = ? WHERE id = ?"),
        {reasonName(reason), storedNow(), id});
}

void SqliteStore::requireRoom()
{
    // As large as documents are; nobody sees it, since it is gone with the transaction that writes its pages.
    constexpr int size = 8192;
    const DocumentRequest trial{newDocumentId(), QStringLiteral("text"), QByteArray(size, '.'), {}};
    m_connection.together([&] {
        take(trial, {});
        m_connection.execute(QStringLiteral("DELETE FROM documents WHERE id = ?"), {trial.id});
    });
}

StoredDocument SqliteStore::withdraw(const QString& id)
{
    return ifQueued(id, [&](const StoredDocument&) { end(id, StateReason::Deleted); });
}

StoredDocument SqliteStore::move(const QString& id, const QString& registerName)
{
    return ifQueued(id, [&](const StoredDocument&) {
        m_connection.execute(
            QStringLiteral("UPDATE documents SET register = ? WHERE id = ?"), {registerName, id});
    });
}

StoredDocument SqliteStore::refuse(const QString& id, const AttemptNote& note)
{
    return ifQueued(id, [&](const StoredDocument& known) {
        const int attempt = known.attemptCount + 1;
        const QString now = storedNow();
        m_connection.execute(
            QStringLiteral("INSERT INTO attempts (id, number, begun, ended, mark_before, movement, failure, "
                           "warnings, verdict) VALUES (?, ?, ?, ?, '{}', '{}', ?, ?, 'notIssued')"),
            {id, attempt, now, now, storedJson(note.failure), storedJson(note.warnings)});
        // As an attempt that leaves no trace: no drive has anything to tell of it.
        m_connection.execute(QStringLiteral("UPDATE documents SET attempts = ?, drive = '', document = NULL, "
                                            "last_attempt = last_insert_rowid() WHERE id = ?"),
            {attempt, id});
        end(id, StateReason::Refused);
    });
}

QStringList SqliteStore::expire(const QDateTime& now)
{
    QStringList ids;
    const auto look = [&] {
        ids.clear();
        m_connection.select(QStringLiteral("SELECT id ") + overdue,
            {storedTime(now), storedTime(now.addSecs(mostSecondsBack))},
            [&ids](const QSqlQuery& row) { ids.append(row.value(0).toString()); });
    };
    // Mostly there are none, and nobody is to wait for that.
    look();
    if (ids.isEmpty())
        return ids;
    m_connection.together([&] {
        look();
        for (const QString& id : std::as_const(ids))
            end(id, StateReason::Expired);
    });
    return ids;
}

QList<DocumentCount> SqliteStore::countByState(const QString& registerName) const
{
    const bool isOfOne = !registerName.isEmpty();
    QList<DocumentCount> counts;
    m_connection.select(
        QStringLiteral("SELECT state, reason, count(*) FROM documents%1 GROUP BY state, reason")
            .arg(isOfOne ? QStringLiteral(" WHERE register = ?") : QString()),
        isOfOne ? QVariantList{registerName} : QVariantList(), [&counts](const QSqlQuery& row) {
            counts.append({stateOf(row.value(0).toString()).value_or(DocumentState::Unknown),
                reasonOf(row.value(1).toString()), row.value(2).toLongLong()});
        });
    return counts;
}

} // namespace sale
