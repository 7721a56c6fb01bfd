#include "postgres/postgresschema.h"

#include "postgres/postgresconnection.h"

#include "journalerror.h"
#include "saletr.h"
#include "storedtime.h"

#include <QSqlQuery>

namespace sale::postgresschema {

namespace {

// Each release that adds something has a row more; the last one's number is the version. What is there is
// never changed, so that the release before goes on: a release that could not raises "least".
constexpr const char* firstRelease[] = {
    // The server empties it when it has died, or another one has taken its place.
    "CREATE UNLOGGED TABLE server_life (id uuid NOT NULL DEFAULT gen_random_uuid(), "
    "alone boolean PRIMARY KEY DEFAULT true CHECK (alone))",
    "CREATE TABLE ids (id text COLLATE \"C\" PRIMARY KEY, digest text NOT NULL, accepted timestamptz NOT NULL)",
    "CREATE SEQUENCE documents_sequence",
    "CREATE TABLE documents ("
    "accepted timestamptz NOT NULL, sequence bigint NOT NULL DEFAULT nextval('documents_sequence'), "
    "id text COLLATE \"C\" NOT NULL, register text NOT NULL, kind text NOT NULL, body text NOT NULL, "
    "digest text NOT NULL, state text NOT NULL, reason text NOT NULL DEFAULT '', start_before timestamptz, "
    "queued timestamptz, begun timestamptz, settled timestamptz, attempts integer NOT NULL DEFAULT 0, "
    "drive text NOT NULL DEFAULT '', document bigint, number_read boolean NOT NULL DEFAULT true, "
    "last_attempt bigint, times integer NOT NULL DEFAULT 0, resolved_by text, resolved_note text, "
    "anonymised timestamptz, return_of text, "
    "pool text NOT NULL DEFAULT '', claimed timestamptz, paperless boolean NOT NULL DEFAULT false, "
    "PRIMARY KEY (accepted, id)) PARTITION BY RANGE (accepted)",
    // The queue, and what is to be settled. Questions have the condition in these words.
    "CREATE INDEX documents_unfinished ON documents (register, sequence) "
    "WHERE state IN ('queued', 'running', 'unknown')",
    // All that is open in its order, piece by piece: of a long queue the piece alone is looked at.
    "CREATE INDEX documents_open ON documents (sequence) WHERE state IN ('queued', 'running', 'unknown')",
    // What waits in pools, what was claimed of it, and what may expire: of a long queue the first ones alone
    // are looked at.
    "CREATE INDEX documents_of_pools ON documents (pool, (sequence + 0)) WHERE state = 'queued' AND register = ''",
    "CREATE INDEX documents_of_pools_paperless ON documents (pool, (sequence + 0)) "
    "WHERE state = 'queued' AND register = '' AND paperless",
    "CREATE INDEX documents_claimed ON documents (register) "
    "WHERE state = 'queued' AND register <> '' AND pool <> ''",
    "CREATE INDEX documents_expiring ON documents (start_before) "
    "WHERE state = 'queued' AND start_before IS NOT NULL",
    "CREATE INDEX documents_ahead ON documents (queued) WHERE state = 'queued'",
    "CREATE INDEX documents_by_drive ON documents (drive, last_attempt)",
    "CREATE INDEX documents_by_register ON documents (register, last_attempt)",
    "CREATE INDEX documents_by_number ON documents (drive, document)",
    "CREATE INDEX documents_by_sequence ON documents (sequence)",
    "CREATE INDEX documents_by_place ON documents (register, sequence)",
    "CREATE INDEX documents_by_state ON documents (register, state, sequence)",
    "CREATE INDEX documents_by_sale ON documents (return_of) WHERE return_of IS NOT NULL",
    "CREATE SEQUENCE attempts_sequence",
    // With their document, whatever the month in which they were begun.
    "CREATE TABLE attempts ("
    "accepted timestamptz NOT NULL, sequence bigint NOT NULL DEFAULT nextval('attempts_sequence'), "
    "id text COLLATE \"C\" NOT NULL, number integer NOT NULL, begun timestamptz NOT NULL, ended timestamptz, "
    "mark_before text NOT NULL, movement text NOT NULL, mark_after text, failure text, warnings text, "
    "verdict text, document bigint, body text, digest text, marks text, register_time text, "
    // Of the owner that began it; null for a program that owns nothing.
    "epoch bigint, PRIMARY KEY (accepted, id, number)) "
    "PARTITION BY RANGE (accepted)",
    "CREATE TABLE goods (sequence bigserial PRIMARY KEY, mark text NOT NULL, id text COLLATE \"C\" NOT NULL, "
    "accepted timestamptz NOT NULL)",
    "CREATE INDEX goods_by_mark ON goods (mark)",
    "CREATE INDEX goods_by_id ON goods (id)",
    // Of the service: who may work a register and what is known of it, whose document it is, and what is
    // still to be told.
    "CREATE TABLE leases (register text PRIMARY KEY, owner text NOT NULL DEFAULT '', "
    "epoch bigint NOT NULL DEFAULT 0, until timestamptz NOT NULL DEFAULT '-infinity', "
    // The owner's process, and whether its line ends at its machine.
    "machine text NOT NULL DEFAULT '', space text NOT NULL DEFAULT '', process bigint NOT NULL DEFAULT 0, "
    "started bigint NOT NULL DEFAULT 0, host text NOT NULL DEFAULT '', bound boolean NOT NULL DEFAULT false)",
    // Who would work a register when nobody else does.
    "CREATE TABLE candidates (register text NOT NULL, owner text NOT NULL, seen timestamptz NOT NULL, "
    "PRIMARY KEY (register, owner))",
    // Which processes may have a register's line open.
    "CREATE TABLE workers (register text NOT NULL, epoch bigint NOT NULL, machine text NOT NULL, "
    "space text NOT NULL, process bigint NOT NULL, started bigint NOT NULL, "
    // When it had ended without leave, where what it has sent may come to the register later still (lasts).
    "killed timestamptz, lasts boolean NOT NULL DEFAULT false, "
    "PRIMARY KEY (register, machine, space, process, started))",
    // By which lease the register with that fiscal drive is worked, whatever it is called, and where in the
    // network it is reached for that.
    "CREATE TABLE drives (drive text PRIMARY KEY, register text NOT NULL, epoch bigint NOT NULL, "
    "address text NOT NULL DEFAULT '', lost boolean NOT NULL DEFAULT false)",
    // Where else in the network a program has met a drive that was somebody else's.
    "CREATE TABLE addresses (address text PRIMARY KEY, drive text NOT NULL, seen timestamptz NOT NULL)",
    "CREATE TABLE frserver_registers (register text PRIMARY KEY, kept text NOT NULL)",
    "CREATE TABLE frserver_owners (id text COLLATE \"C\" PRIMARY KEY, owner text NOT NULL)",
    "CREATE TABLE frserver_outbox (number bigserial PRIMARY KEY, document text NOT NULL, body text NOT NULL, "
    "created timestamptz NOT NULL, attempts integer NOT NULL DEFAULT 0, due timestamptz NOT NULL)",
    // Services that run, what they tell of the registers that they work, and what whoever works one is to do
    // with it, as a service was asked.
    "CREATE TABLE services (id text PRIMARY KEY, name text NOT NULL, seen timestamptz NOT NULL)",
    "CREATE TABLE registers (name text PRIMARY KEY, service text NOT NULL, settings text NOT NULL, "
    "view text NOT NULL, told timestamptz NOT NULL, "
    // Numbers of orders that were followed before it was told: those that somebody waits for.
    "followed text NOT NULL DEFAULT '[]')",
    "CREATE TABLE orders (number bigserial PRIMARY KEY, asked text NOT NULL, register text NOT NULL, "
    "content text NOT NULL, made timestamptz NOT NULL)",
    "CREATE INDEX frserver_outbox_by_document ON frserver_outbox (document, number)",
    nullptr,
};
constexpr const char* const* releases[] = {firstRelease};
constexpr int version = static_cast<int>(std::size(releases));
/// What goes on with the tables as they are now.
constexpr int least = 1;

/// Of all programs that change tables.
const QString alone = QStringLiteral("SELECT pg_advisory_xact_lock(1718765414, 0)");

struct Versions
{
    int version = 0;
    int least = 0;
};

bool hasTable(const PostgresConnection& connection, const QString& name)
{
    return !connection.value(QStringLiteral("SELECT to_regclass('frspf.%1')::text").arg(name)).isNull();
}

Versions versionsOf(const PostgresConnection& connection)
{
    Versions found;
    if (!hasTable(connection, QStringLiteral("version")))
        return found;
    connection.select(
        QStringLiteral("SELECT number, least FROM version"), {}, [&found](const QSqlQuery& row) {
            found = {row.value(0).toInt(), row.value(1).toInt()};
        });
    // None was ever committed with that.
    if (found.version < 1)
        throw JournalError(tr("journal %1: frspf.version does not say of which release its tables are")
                               .arg(connection.place().shown()),
            tr("somebody has changed that; put back the number, or a backup"));
    return found;
}

void refuseLater(const PostgresConnection& connection, const Versions& found)
{
    if (found.least > version)
        throw JournalError(tr("journal %1 is one of a later release").arg(connection.place().shown()));
}

/// Those of that month.
QString partOf(const QString& table, const QDate& month)
{
    return table + month.toString(QStringLiteral("_yyyy_MM"));
}

void makeMonth(PostgresConnection& connection, const QString& all, const QDate& month)
{
    const QString part = partOf(all, month);
    if (hasTable(connection, part))
        return;
    connection.execute(QStringLiteral("CREATE TABLE %1 (LIKE %2 INCLUDING DEFAULTS)").arg(part, all));
    connection.execute(
        QStringLiteral("ALTER TABLE %1 ATTACH PARTITION %2 FOR VALUES FROM ('%3') TO ('%4')")
            .arg(all, part, month.toString(Qt::ISODate), month.addMonths(1).toString(Qt::ISODate)));
}

} // namespace

void migrate(PostgresConnection& connection)
{
    if (connection.value(QStringLiteral("SHOW server_encoding")).toString() != QStringLiteral("UTF8"))
        throw JournalError(
            tr("journal %1: the database is not one of UTF-8").arg(connection.place().shown()));
    connection.together([&] {
        connection.value(alone);
        connection.execute(QStringLiteral("CREATE SCHEMA IF NOT EXISTS frspf"));
        const Versions found = versionsOf(connection);
        refuseLater(connection, found);
        if (found.version >= version)
            return;
        if (found.version == 0) {
            connection.execute(QStringLiteral("CREATE TABLE version (number integer NOT NULL, "
                                              "least integer NOT NULL, changed timestamptz NOT NULL)"));
            connection.execute(QStringLiteral("INSERT INTO version VALUES (0, 0, now())"));
        }
        for (int release = found.version; release < version; ++release) {
            for (const char* const* statement = releases[release]; *statement != nullptr; ++statement)
                connection.execute(QString::fromLatin1(*statement));
        }
        connection.execute(
            QStringLiteral("UPDATE version SET number = ?, least = ?, changed = now()"), {version, least});
    });
    makeMonths(connection, timeFromStored(connection.now()).date());
}

void require(const PostgresConnection& connection)
{
    const Versions found = versionsOf(connection);
    refuseLater(connection, found);
    if (found.version < version)
        throw JournalError(found.version == 0
                ? tr("journal %1 has no tables yet").arg(connection.place().shown())
                : tr("journal %1 is one of a former release").arg(connection.place().shown()),
            tr("frserver migrate makes the tables"));
}

void makeMonths(PostgresConnection& connection, const QDate& first)
{
    constexpr int ahead = 2;
    const QDate month(first.year(), first.month(), 1);
    const QString documents = QStringLiteral("documents");
    const QString attempts = QStringLiteral("attempts");
    QList<QDate> missing;
    for (int each = 0; each <= ahead; ++each) {
        if (!hasTable(connection, partOf(attempts, month.addMonths(each))))
            missing.append(month.addMonths(each));
    }
    if (missing.isEmpty())
        return;
    connection.together([&] {
        connection.value(alone);
        for (const QDate& each : std::as_const(missing)) {
            makeMonth(connection, documents, each);
            makeMonth(connection, attempts, each);
        }
    });
}

} // namespace sale::postgresschema
