#include "sqlitestore.h"

#include "journalfault.h"
#include "placeonfile.h"
#include "storedtime.h"

#include <QSqlQuery>

#include <algorithm>
#include <iterator>

namespace sale {

namespace {

// Raised when releases before could not go on with the file. What is only added raises nothing: they name
// the columns that they write.
constexpr int schemaVersion = 1;
// "frJL": tells the file from those of other programs.
constexpr int applicationId = 0x66724A4C;

constexpr const char* schemaStatements[] = {
    // One row an id, for ever.
    "CREATE TABLE documents ("
    "sequence INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL UNIQUE, register TEXT NOT NULL, "
    "kind TEXT NOT NULL, body TEXT NOT NULL, digest TEXT NOT NULL, state TEXT NOT NULL, "
    "reason TEXT NOT NULL DEFAULT '', accepted TEXT NOT NULL, start_before TEXT, begun TEXT, settled TEXT, "
    "attempts INTEGER NOT NULL DEFAULT 0, drive TEXT NOT NULL DEFAULT '', document INTEGER, "
    "number_read INTEGER NOT NULL DEFAULT 1, last_attempt INTEGER, times INTEGER NOT NULL DEFAULT 0, resolved_by TEXT, resolved_note TEXT, "
    "anonymised TEXT)",
    // The queue, and what is to be settled: few rows of many. Questions have the condition in these words.
    "CREATE INDEX documents_unfinished ON documents (state) "
    "WHERE state IN ('queued', 'running', 'unknown')",
    "CREATE INDEX documents_by_drive ON documents (drive, last_attempt)",
    "CREATE INDEX documents_by_register ON documents (register, last_attempt)",
    "CREATE INDEX documents_by_number ON documents (drive, document)",
    "CREATE INDEX documents_by_time ON documents (accepted)",
    // A body of its own only where a later attempt was corrected.
    "CREATE TABLE attempts (sequence INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL, number INTEGER NOT NULL, begun TEXT NOT NULL, ended TEXT, "
    "mark_before TEXT NOT NULL, movement TEXT NOT NULL, mark_after TEXT, failure TEXT, warnings TEXT, "
    "verdict TEXT, document INTEGER, body TEXT, digest TEXT, UNIQUE (id, number))",
    "CREATE TABLE goods (sequence INTEGER PRIMARY KEY AUTOINCREMENT, mark TEXT NOT NULL, id TEXT NOT NULL)",
    "CREATE INDEX goods_by_mark ON goods (mark)",
    "CREATE INDEX goods_by_id ON goods (id)",
    "CREATE TABLE takeovers (file TEXT PRIMARY KEY, time TEXT NOT NULL)",
};

// What came to the format later, for new files and for those of releases before. Nothing is ever taken away,
// and no column may be NOT NULL without a default.
struct LaterColumn
{
    const char* table;
    const char* name;
    const char* type = "TEXT";
};
constexpr LaterColumn laterColumns[] = {{"documents", "queued"}, {"documents", "return_of"},
    {"attempts", "marks"}, {"attempts", "register_time"}, {"documents", "pool", "TEXT NOT NULL DEFAULT ''"},
    {"documents", "claimed"}, {"documents", "paperless", "INTEGER NOT NULL DEFAULT 0"}};
constexpr const char* laterIndices[] = {
    "CREATE INDEX IF NOT EXISTS documents_by_sale ON documents (return_of) WHERE return_of IS NOT NULL",
    // Lists of a long journal, page by page.
    "CREATE INDEX IF NOT EXISTS documents_by_place ON documents (register, sequence)",
    "CREATE INDEX IF NOT EXISTS documents_by_state ON documents (register, state, sequence)",
    // What waits in pools, what was claimed of it, and what may expire: of a long queue the first ones alone
    // are looked at.
    "CREATE INDEX IF NOT EXISTS documents_of_pools ON documents (pool, sequence + 0) "
    "WHERE state = 'queued' AND register = ''",
    "CREATE INDEX IF NOT EXISTS documents_of_pools_paperless ON documents (pool, sequence + 0) "
    "WHERE state = 'queued' AND register = '' AND paperless",
    "CREATE INDEX IF NOT EXISTS documents_claimed ON documents (register) "
    "WHERE state = 'queued' AND register <> '' AND pool <> ''",
    "CREATE INDEX IF NOT EXISTS documents_expiring ON documents (start_before) "
    "WHERE state = 'queued' AND start_before IS NOT NULL",
    "CREATE INDEX IF NOT EXISTS documents_ahead ON documents (queued) WHERE state = 'queued'",
};
// Until then nothing waited in a journal but for the moment before it was begun: what a program left so when
// it was killed must not be sold now, unasked.
constexpr const char* endLeftovers
    = "UPDATE documents SET state = 'notIssued', reason = 'expired', settled = ? WHERE state = 'queued'";

// Journals of earlier releases: a row of "sales" for each id, a row of "marks" for each marked piece, whose
// id is empty for a sale without one. Of a sale only the fingerprint of its receipt was kept, which is the
// digest.
constexpr const char* takeIds
    = "INSERT INTO documents (id, register, kind, body, digest, state, reason, accepted, begun, settled, "
      "attempts, drive, document, times) "
      "SELECT id, '', 'sell', '', receipt, CASE outcome WHEN 'pending' THEN 'running' ELSE outcome END, "
      "CASE outcome WHEN 'notIssued' THEN 'settled' ELSE '' END, time, time, "
      "CASE outcome WHEN 'pending' THEN NULL ELSE time END, 1, drive, nullif(document, 0), "
      "outcome = 'issued' FROM (SELECT *, replace(changed, ' ', 'T') || '.000Z' AS time FROM %1.sales) "
      "WHERE true ON CONFLICT (id) DO UPDATE SET digest = excluded.digest, state = excluded.state, "
      "reason = excluded.reason, drive = excluded.drive, document = excluded.document, "
      "times = excluded.times WHERE documents.state = 'notIssued'";
// What was unknown was asked about then; an empty mark says so.
constexpr const char* takeAttempts
    = "INSERT OR IGNORE INTO attempts (id, number, begun, ended, mark_before, movement, mark_after, verdict, "
      "document) SELECT id, 1, time, CASE outcome WHEN 'pending' THEN NULL ELSE time END, "
      "json_object('drive', drive, 'lastDocument', document_before), '{}', "
      "CASE outcome WHEN 'pending' THEN NULL ELSE '{}' END, "
      "CASE outcome WHEN 'pending' THEN NULL ELSE outcome END, nullif(document, 0) "
      "FROM (SELECT *, replace(changed, ' ', 'T') || '.000Z' AS time FROM %1.sales)";
constexpr const char* takeNamelessSales
    = "INSERT OR IGNORE INTO documents (id, register, kind, body, digest, state, accepted, begun, settled, "
      "drive, document, times) "
      "SELECT trim(sale, '{}'), '', 'sell', '', '', CASE outcome WHEN 'pending' THEN 'unknown' ELSE outcome "
      "END, replace(changed, ' ', 'T') || '.000Z', replace(changed, ' ', 'T') || '.000Z', "
      "replace(changed, ' ', 'T') || '.000Z', drive, nullif(document, 0), outcome = 'issued' "
      "FROM %1.marks WHERE id = '' GROUP BY sale";
constexpr const char* takeReturns
    = "UPDATE documents SET kind = 'sellReturn' WHERE body = '' AND EXISTS (SELECT 1 FROM %1.marks "
      "WHERE returned AND CASE id WHEN '' THEN trim(sale, '{}') ELSE id END = documents.id)";
constexpr const char* takeGoods
    = "INSERT INTO goods (mark, id) SELECT mark, CASE id WHEN '' THEN trim(sale, '{}') ELSE id END FROM %1.marks ORDER BY %1.marks.rowid";

} // namespace

SqliteStore::SqliteStore(const QString& fileName, int patienceMs)
    : SqlStore(m_connection)
    , m_connection(fileName, patienceMs)
{
    makeTables();
    takeOverFrom(QStringLiteral("main"), QString::fromLatin1(""));
}

bool SqliteStore::hasTable(const QString& schema, const char* table) const
{
    return m_connection
        .value(QStringLiteral("SELECT 1 FROM %1.sqlite_master WHERE type = 'table' AND name = ?").arg(schema),
            {QString::fromLatin1(table)})
        .isValid();
}

bool SqliteStore::isReady() const
{
    constexpr int formerColumns = 7;
    int version = 0;
    bool isEmpty = false;
    bool isFormer = false;
    bool isOurs = false;
    // At one moment: another program may be making them.
    m_connection.select(
        QStringLiteral(
            "SELECT (SELECT user_version FROM pragma_user_version), "
            "(SELECT application_id FROM pragma_application_id), count(*), "
            "(SELECT count(*) FROM pragma_table_info('sales') WHERE name IN ('id', 'receipt', "
            "'outcome', 'document', 'drive', 'document_before', 'changed')), sum(name = 'takeovers') FROM sqlite_master"),
        {}, [&](const QSqlQuery& row) {
            version = row.value(0).toInt();
            const int id = row.value(1).toInt();
            isEmpty = id == 0 && row.value(2).toInt() == 0;
            isFormer = id == 0 && row.value(3).toInt() == formerColumns;
            // The first ones of this format had none.
            isOurs = id == applicationId || (id == 0 && row.value(4).toInt() > 0);
        });
    if (version == 0 && (isEmpty || isFormer))
        return false;
    if (version < 1 || !isOurs)
        throw foreignJournal(fileName());
    if (version > schemaVersion)
        throw laterJournal(fileName());
    return true;
}

bool SqliteStore::hasColumn(const char* table, const char* name) const
{
    return m_connection
        .value(QStringLiteral("SELECT 1 FROM pragma_table_info('%1') WHERE name = '%2'")
                   .arg(QLatin1String(table), QLatin1String(name)))
        .isValid();
}

bool SqliteStore::isComplete() const
{
    return std::all_of(std::begin(laterColumns), std::end(laterColumns),
        [this](const LaterColumn& column) { return hasColumn(column.table, column.name); });
}

void SqliteStore::makeTables()
{
    // Whoever only reads need not wait for those who write, and what is another program's stays as it is.
    const bool isMade = isReady() && isComplete();
    m_connection.keepLogAhead();
    if (isMade)
        return;
    if (isReady())
        keepFormer();
    m_connection.together([this] {
        const bool isNew = !isReady();
        if (!isNew && isComplete())
            return;
        for (const char* const statement : schemaStatements) {
            if (isNew)
                m_connection.execute(QString::fromLatin1(statement));
        }
        addLater();
        m_connection.execute(QStringLiteral("PRAGMA application_id = %1").arg(applicationId));
        m_connection.execute(QStringLiteral("PRAGMA user_version = %1").arg(schemaVersion));
    });
}

void SqliteStore::keepFormer() const
{
    // Of several programs that come at once each may leave one.
    const QString time = timeFromStored(storedNow()).toUTC().toString(QStringLiteral("yyyyMMddTHHmmsszzz"));
    const QString copy = QStringLiteral("%1.before-update-%2").arg(fileName(), time);
    if (!lookAt(copy))
        copyForGroup(copy);
}

void SqliteStore::addLater()
{
    const bool hadQueue = hasColumn("documents", "queued");
    for (const LaterColumn& column : laterColumns) {
        if (!hasColumn(column.table, column.name))
            m_connection.execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2 %3")
                                     .arg(QLatin1String(column.table), QLatin1String(column.name),
                                         QLatin1String(column.type)));
    }
    for (const char* const index : laterIndices)
        m_connection.execute(QString::fromLatin1(index));
    if (!hadQueue)
        m_connection.execute(QString::fromLatin1(endLeftovers), {storedNow()});
}

bool SqliteStore::isTakenOver(const QString& name) const
{
    return m_connection.value(QStringLiteral("SELECT 1 FROM takeovers WHERE file = ?"), {name}).isValid();
}

void SqliteStore::takeOver(const QString& formerFile)
{
    if (formerFile == fileName() || isTakenOver(formerFile))
        return;
    const std::optional<int> found = lookAt(formerFile);
    if (!found)
        return;
    if (*found != 0)
        throw formerJournalFault(formerFile, *found);
    const QString schema = QStringLiteral("former");
    m_connection.attach(formerFile, schema);
    try {
        takeOverFrom(schema, formerFile);
    } catch (const JournalError&) {
        m_connection.detach(schema);
        throw;
    }
    m_connection.detach(schema);
}

void SqliteStore::takeOverFrom(const QString& schema, const QString& name)
{
    const auto take = [&](std::initializer_list<const char*> statements) {
        for (const char* const statement : statements)
            m_connection.execute(QString::fromLatin1(statement).arg(schema));
    };
    if (!hasTable(schema, "sales") || isTakenOver(name))
        return;
    m_connection.together([&] {
        const int isNew = m_connection.execute(
            QStringLiteral("INSERT OR IGNORE INTO takeovers VALUES (?, ?)"), {name, storedNow()});
        if (isNew == 0)
            return;
        take({takeIds, takeAttempts});
        // Earlier ones still had none.
        if (hasTable(schema, "marks"))
            take({takeNamelessSales, takeReturns, takeGoods});
    });
}

} // namespace sale
