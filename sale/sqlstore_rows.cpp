#include "sqlstore.h"

#include "documentid.h"
#include "storedtime.h"

namespace sale {

SqlKey SqlStore::keyOf(const QString& id) const
{
    return {{QStringLiteral("id")}, {id}};
}

SqlKey SqlStore::keyOf(const StoredDocument& document) const
{
    return keyOf(document.request.id);
}

std::optional<StoredDocument> SqlStore::held(const QString& id)
{
    // Where one transaction at a time writes.
    return documentAt(keyOf(id));
}

void SqlStore::holdReturns(const QString& /*saleId*/)
{
    // Where one transaction at a time writes.
}

void SqlStore::requireOwner(const QString& /*drive*/)
{
    // Where one machine has them all.
}

void SqlStore::requireLease(const QString& /*registerName*/, const QJsonObject& /*lease*/)
{
    // Where one machine has them all.
}

QString SqlStore::isOfNoOther() const
{
    return {};
}

SqlKey SqlStore::origin() const
{
    return {};
}

DocumentEnding SqlStore::notIssued(const StoredDocument& /*known*/, const DocumentEnding& ending)
{
    // Whoever began it has lost the port's lock, and with it the register.
    return ending;
}

void SqlStore::writeId(const QString& /*id*/, const QString& /*digest*/, const QString& /*accepted*/)
{
    // Where the document's own row keeps it.
}

void SqlStore::forget(const QString& id)
{
    const SqlKey key = keyOf(id);
    m_sql.execute(QStringLiteral("DELETE FROM documents WHERE %1").arg(key.condition()), key.values);
}

void SqlStore::requireRoom()
{
    // As large as documents are; nobody sees it, since it is gone with the transaction that writes its pages.
    constexpr int size = 8192;
    const DocumentRequest trial{newDocumentId(), QStringLiteral("text"), QByteArray(size, '.'), {}};
    m_sql.together([&] {
        take(trial, {});
        forget(trial.id);
    });
}

QString SqlStore::goodsJoin() const
{
    return QStringLiteral("goods.id = documents.id");
}

QString SqlStore::textCondition() const
{
    return QStringLiteral("instr(lower(documents.id || char(10) || body), lower(?)) > 0");
}

QString SqlStore::lockingWords() const
{
    return {};
}

QString SqlStore::now() const
{
    return storedNow();
}

QString SqlStore::momentAgo(std::chrono::seconds age) const
{
    return QStringLiteral("strftime('%Y-%m-%dT%H:%M:%fZ', 'now', '%1 seconds')").arg(-age.count());
}

qint64 SqlStore::insertInto(
    const QString& table, const QString& id, const QStringList& columns, const QVariantList& values)
{
    const SqlKey key = keyOf(id);
    const QStringList all = columns + key.columns;
    const QStringList places(all.size(), QStringLiteral("?"));
    return m_sql
        .value(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) RETURNING sequence")
                   .arg(table, all.join(QStringLiteral(", ")), places.join(QStringLiteral(", "))),
            values + key.values)
        .toLongLong();
}

void SqlStore::update(const QString& id, const QString& changes, const QVariantList& values)
{
    const SqlKey key = keyOf(id);
    m_sql.execute(QStringLiteral("UPDATE documents SET %1 WHERE %2").arg(changes, key.condition()),
        values + key.values);
}

void SqlStore::updateAttempt(
    const QString& id, int attempt, const QString& changes, const QVariantList& values)
{
    const SqlKey key = keyOf(id);
    m_sql.execute(
        QStringLiteral("UPDATE attempts SET %1 WHERE %2 AND number = ?").arg(changes, key.condition()),
        values + key.values + QVariantList{attempt});
}

void SqlStore::updateBegun(
    const QString& id, int attempt, qint64 sequence, const QString& changes, const QVariantList& values)
{
    update(id, changes + QStringLiteral(", attempts = ?, document = NULL, last_attempt = ?"),
        values + QVariantList{attempt, sequence});
}

int SqlStore::anonymise(const QDateTime& before)
{
    const QString ended = QStringLiteral(
        "state IN ('issued', 'notIssued') AND accepted < ? AND anonymised IS NULL AND kind <> 'review'");
    int documents = 0;
    const auto write = [&] {
        m_sql.execute(QStringLiteral("UPDATE attempts SET warnings = NULL, marks = NULL, "
                                     "body = CASE WHEN body IS NULL THEN NULL ELSE '' END "
                                     "WHERE id IN (SELECT id FROM documents WHERE %1)")
                          .arg(ended),
            {storedTime(before)});
        documents = m_sql.execute(
            QStringLiteral("UPDATE documents SET body = '', resolved_by = NULL, resolved_note = NULL, "
                           "anonymised = ? WHERE %1")
                .arg(ended),
            {now(), storedTime(before)});
    };
    m_sql.atLeisure([&] { m_sql.together(write); });
    return documents;
}

} // namespace sale
