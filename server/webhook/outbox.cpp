#include "webhook/outbox.h"

#include "storedtime.h"

#include <QSqlQuery>

namespace frserver {

namespace {

const QString table = QStringLiteral(
    "CREATE TABLE IF NOT EXISTS frserver_outbox (number INTEGER PRIMARY KEY AUTOINCREMENT, "
    "document TEXT NOT NULL, body TEXT NOT NULL, created TEXT NOT NULL, attempts INTEGER NOT NULL DEFAULT 0, "
    "due TEXT NOT NULL)");
const QString index
    = QStringLiteral("CREATE INDEX IF NOT EXISTS frserver_outbox_by_document ON frserver_outbox (document)");
// The words are those of the interface. json() keeps a flag from becoming a number.
const QString trigger = QStringLiteral(
    "CREATE TRIGGER IF NOT EXISTS frserver_outbox_end AFTER UPDATE OF state ON documents "
    "WHEN NEW.state IN ('issued', 'notIssued', 'unknown') AND NEW.state <> OLD.state AND NEW.kind <> 'review' BEGIN "
    "INSERT INTO frserver_outbox (document, body, created, due) VALUES (NEW.id, json_object("
    "'id', NEW.id, 'kind', NEW.kind, 'register', NEW.register, 'state', NEW.state, "
    "'reason', nullif(NEW.reason, ''), 'times', NEW.times, 'drive', nullif(NEW.drive, ''), "
    "'documentNumber', NEW.document, 'documentNumberRead', CASE WHEN NEW.document IS NULL THEN NULL "
    "ELSE json(iif(NEW.number_read, 'true', 'false')) END, 'accepted', NEW.accepted, 'begun', NEW.begun, "
    "'settled', NEW.settled, 'attemptCount', NEW.attempts), "
    "NEW.settled, NEW.settled); END");

Delivery deliveryOf(const QSqlQuery& row)
{
    return {row.value(0).toLongLong(), row.value(1).toString(), row.value(2).toString().toUtf8(),
        sale::timeFromStored(row.value(3).toString()), row.value(4).toInt(),
        sale::timeFromStored(row.value(5).toString())};
}

/// More than anything is postponed by.
constexpr qint64 longestPauseSeconds = 3600;
/// Of each document.
const QString firstOnes
    = QStringLiteral("number IN (SELECT min(number) FROM frserver_outbox GROUP BY document)");

} // namespace

Outbox::Outbox(const QString& fileName, int patienceMs)
    : m_connection(fileName, patienceMs)
{
    m_connection.execute(table);
    m_connection.execute(index);
}

void Outbox::open()
{
    m_connection.execute(trigger);
}

void Outbox::close()
{
    m_connection.execute(QStringLiteral("DROP TRIGGER IF EXISTS frserver_outbox_end"));
}

QList<Delivery> Outbox::due(const QDateTime& now, int limit) const
{
    QList<Delivery> found;
    m_connection.select(
        QStringLiteral(
            "SELECT number, document, body, created, attempts, due FROM frserver_outbox WHERE (due <= ? OR due > ?) "
            "AND %1 ORDER BY number LIMIT ?")
            .arg(firstOnes),
        {sale::storedTime(now), sale::storedTime(now.addSecs(longestPauseSeconds)), limit},
        [&found](const QSqlQuery& row) { found.append(deliveryOf(row)); });
    return found;
}

QDateTime Outbox::nextDue() const
{
    const QVariant due
        = m_connection.value(QStringLiteral("SELECT min(due) FROM frserver_outbox WHERE ") + firstOnes);
    return sale::timeFromStored(due.toString());
}

qint64 Outbox::count() const
{
    return m_connection.value(QStringLiteral("SELECT count(*) FROM frserver_outbox")).toLongLong();
}

void Outbox::remove(qint64 number)
{
    m_connection.execute(QStringLiteral("DELETE FROM frserver_outbox WHERE number = ?"), {number});
}

void Outbox::postpone(qint64 number, const QDateTime& due)
{
    m_connection.execute(
        QStringLiteral("UPDATE frserver_outbox SET attempts = attempts + 1, due = ? WHERE number = ?"),
        {sale::storedTime(due), number});
}

int Outbox::dropOlderThan(const QDateTime& created, int attempts)
{
    return m_connection.execute(
        QStringLiteral("DELETE FROM frserver_outbox WHERE created < ? AND attempts >= ?"),
        {sale::storedTime(created), attempts});
}

} // namespace frserver
