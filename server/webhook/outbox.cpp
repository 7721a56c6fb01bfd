#include "webhook/outbox.h"

#include "postgres/openstore.h"
#include "storedtime.h"

#include <QSqlQuery>

#include <algorithm>

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
    "'id', NEW.id, 'kind', NEW.kind, 'register', NEW.register, 'pool', nullif(NEW.pool, ''), "
    "'state', NEW.state, "
    "'reason', nullif(NEW.reason, ''), 'times', NEW.times, 'drive', nullif(NEW.drive, ''), "
    "'documentNumber', NEW.document, 'documentNumberRead', CASE WHEN NEW.document IS NULL THEN NULL "
    "ELSE json(iif(NEW.number_read, 'true', 'false')) END, 'accepted', NEW.accepted, 'begun', NEW.begun, "
    "'settled', NEW.settled, 'attemptCount', NEW.attempts), "
    "NEW.settled, NEW.settled); END");

// The same for the tables of many machines, whichever month's.
const QString sharedTriggerIsThere = QStringLiteral(
    "SELECT 1 FROM pg_trigger WHERE tgname = 'frserver_outbox_end' AND tgrelid = 'documents'::regclass");
const QString sharedFunction = QStringLiteral(
    "CREATE OR REPLACE FUNCTION frserver_outbox_end() RETURNS trigger LANGUAGE plpgsql "
    "SET search_path = frspf SET TimeZone = 'UTC' AS $$ BEGIN "
    "INSERT INTO frserver_outbox (document, body, created, due) VALUES (NEW.id, json_build_object("
    "'id', NEW.id, 'kind', NEW.kind, 'register', NEW.register, 'pool', nullif(NEW.pool, ''), "
    "'state', NEW.state, "
    "'reason', nullif(NEW.reason, ''), 'times', NEW.times, 'drive', nullif(NEW.drive, ''), "
    "'documentNumber', NEW.document, 'documentNumberRead', CASE WHEN NEW.document IS NULL THEN NULL "
    "ELSE NEW.number_read END, 'accepted', %1, 'begun', %2, 'settled', %3, 'attemptCount', NEW.attempts)::text, "
    "NEW.settled, NEW.settled); RETURN NULL; END $$");
const QString sharedTrigger = QStringLiteral(
    "CREATE TRIGGER frserver_outbox_end AFTER UPDATE ON documents FOR EACH ROW "
    "WHEN (NEW.state IN ('issued', 'notIssued', 'unknown') AND NEW.state <> OLD.state AND NEW.kind <> 'review') "
    "EXECUTE FUNCTION frserver_outbox_end()");
/// It ends with the connection.
const QString becomeTeller = QStringLiteral(
    "SELECT CASE WHEN EXISTS (SELECT 1 FROM pg_locks WHERE locktype = 'advisory' AND classid = 1718765416 "
    "AND pid = pg_backend_pid()) THEN true ELSE pg_try_advisory_lock(1718765416, 0) END");

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

Outbox::Outbox(const QString& place, int patienceMs)
    : m_connection(sale::openConnection(place, patienceMs))
{
    if (m_connection->isShared())
        return;
    m_connection->execute(table);
    m_connection->execute(index);
}

void Outbox::open()
{
    if (!m_connection->isShared()) {
        m_connection->execute(trigger);
        return;
    }
    if (m_connection->value(sharedTriggerIsThere).isValid())
        return;
    // Whoever writes waits while it is made, and so does another service that begins just now.
    m_connection->together([this] {
        m_connection->value(QStringLiteral("SELECT pg_advisory_xact_lock(1718765416, 1)"));
        if (m_connection->value(sharedTriggerIsThere).isValid())
            return;
        m_connection->execute(sharedFunction.arg(m_connection->moment(QStringLiteral("NEW.accepted")),
            m_connection->moment(QStringLiteral("NEW.begun")),
            m_connection->moment(QStringLiteral("NEW.settled"))));
        m_connection->execute(sharedTrigger);
    });
}

void Outbox::close()
{
    if (!m_connection->isShared())
        m_connection->execute(QStringLiteral("DROP TRIGGER IF EXISTS frserver_outbox_end"));
}

bool Outbox::isTeller() const
{
    return !m_connection->isShared() || m_connection->value(becomeTeller).toBool();
}

/// One that was not tried yet is due by any clock: a database may have another one than whoever tells.
QList<Delivery> Outbox::due(const QDateTime& now, int limit) const
{
    QList<Delivery> found;
    if (!isTeller())
        return found;
    m_connection->select(
        QStringLiteral("SELECT number, document, body, %1, attempts, %2 FROM frserver_outbox "
                       "WHERE (attempts = 0 OR due <= ? OR due > ?) AND %3 ORDER BY number LIMIT ?")
            .arg(m_connection->moment(QStringLiteral("created")), m_connection->moment(QStringLiteral("due")),
                firstOnes),
        {sale::storedTime(now), sale::storedTime(now.addSecs(longestPauseSeconds)), limit},
        [&found](const QSqlQuery& row) { found.append(deliveryOf(row)); });
    return found;
}

QDateTime Outbox::nextDue() const
{
    constexpr int lookAgainSeconds = 5;
    // Nobody says here what others have ended, or that the one who tells is gone.
    const QDateTime later = m_connection->isShared()
        ? sale::timeFromStored(sale::storedNow()).addSecs(lookAgainSeconds)
        : QDateTime();
    if (!isTeller())
        return later;
    const QVariant due
        = m_connection->value(QStringLiteral("SELECT %1 FROM frserver_outbox WHERE %2")
                                  .arg(m_connection->moment(QStringLiteral("min(due)")), firstOnes));
    const QDateTime next = sale::timeFromStored(due.toString());
    if (!later.isValid())
        return next;
    return next.isValid() ? std::min(next, later) : later;
}

qint64 Outbox::count() const
{
    return m_connection->value(QStringLiteral("SELECT count(*) FROM frserver_outbox")).toLongLong();
}

void Outbox::remove(qint64 number)
{
    m_connection->execute(QStringLiteral("DELETE FROM frserver_outbox WHERE number = ?"), {number});
}

void Outbox::postpone(qint64 number, const QDateTime& due)
{
    m_connection->execute(
        QStringLiteral("UPDATE frserver_outbox SET attempts = attempts + 1, due = ? WHERE number = ?"),
        {sale::storedTime(due), number});
}

int Outbox::dropOlderThan(const QDateTime& created, int attempts)
{
    return m_connection->execute(
        QStringLiteral("DELETE FROM frserver_outbox WHERE created < ? AND attempts >= ?"),
        {sale::storedTime(created), attempts});
}

} // namespace frserver
