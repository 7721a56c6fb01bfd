#include "memory/statestore.h"

#include "memory/memoryerror.h"
#include "memory/migrations.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

namespace emulator {

namespace {

// "SPFE": tells the file of a state from any other database.
constexpr int applicationId = 0x53504645;

} // namespace

StateStore::StateStore(const QString& fileName, Access access)
    : m_fileName(fileName)
    , m_connection(QUuid::createUuid().toString())
{
    try {
        open(access);
        check(access);
    } catch (const MemoryError&) {
        // A constructor that throws has no destructor to close the file.
        close();
        throw;
    }
}

StateStore::~StateStore()
{
    close();
}

void StateStore::open(Access access)
{
    const bool exists = QFile::exists(m_fileName);
    if (!exists && access == Access::ReadOnly)
        fail(QStringLiteral("there is no such state"));
    // What has not come from the log into the file yet would be lost without a word.
    if (!exists && QFile::exists(m_fileName + QStringLiteral("-wal")))
        fail(QStringLiteral("damaged: the file is gone, its log is there"));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(m_fileName);
    // Nobody else writes: who does has no business here and is not waited for.
    database.setConnectOptions(access == Access::ReadOnly
            ? QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=1000")
            : QStringLiteral("QSQLITE_BUSY_TIMEOUT=100"));
    if (!database.open())
        fail(database.lastError().text());
}

void StateStore::close()
{
    if (QSqlDatabase::contains(m_connection)) {
        QSqlDatabase::database(m_connection, false).close();
        QSqlDatabase::removeDatabase(m_connection);
    }
}

void StateStore::check(Access access)
{
    const int id = number(QStringLiteral("PRAGMA application_id"));
    const int version = number(QStringLiteral("PRAGMA user_version"));
    const bool isEmpty = number(QStringLiteral("SELECT count(*) FROM sqlite_master")) == 0;
    const bool isNew = isEmpty && id == 0 && version == 0;
    if (!isNew && id != applicationId)
        fail(QStringLiteral("a database of another program"));
    if (version > migrations::newestVersion())
        fail(QStringLiteral("made by a newer spf-emulator (version %1 of the format, this one has %2)")
                 .arg(version)
                 .arg(migrations::newestVersion()));
    QSqlQuery faults = execute(QStringLiteral("PRAGMA quick_check(1)"));
    if (!faults.next() || faults.value(0).toString() != QStringLiteral("ok"))
        fail(QStringLiteral("damaged: ") + faults.value(0).toString());
    if (access == Access::ReadOnly)
        return;
    faults.finish();
    execute(QStringLiteral("PRAGMA journal_mode = WAL"));
    execute(QStringLiteral("PRAGMA synchronous = FULL"));
    if (isNew)
        create();
    migrate(isNew ? migrations::newestVersion() : version);
}

void StateStore::create()
{
    together([this] {
        for (const QString& statement : migrations::tables())
            execute(statement);
        execute(QStringLiteral("PRAGMA application_id = %1").arg(applicationId));
        execute(QStringLiteral("PRAGMA user_version = %1").arg(migrations::newestVersion()));
    });
}

void StateStore::migrate(int version)
{
    for (int next = version + 1; next <= migrations::newestVersion(); ++next) {
        together([this, next] {
            for (const QString& statement : migrations::stepTo(next))
                execute(statement);
            execute(QStringLiteral("PRAGMA user_version = %1").arg(next));
        });
    }
}

QMap<QString, QByteArray> StateStore::parts() const
{
    QMap<QString, QByteArray> result;
    QSqlQuery rows = execute(QStringLiteral("SELECT name, content FROM parts"));
    while (rows.next())
        result[rows.value(0).toString()] = rows.value(1).toByteArray();
    return result;
}

QList<DocumentRow> StateStore::documents() const
{
    QList<DocumentRow> result;
    QSqlQuery rows
        = execute(QStringLiteral("SELECT number, record, entry, page FROM documents ORDER BY number"));
    while (rows.next())
        result.append({rows.value(0).toUInt(), rows.value(1).toByteArray(), rows.value(2).toByteArray(),
            rows.value(3).toByteArray()});
    return result;
}

void StateStore::write(const StateChange& change)
{
    together([this, &change] {
        for (auto part = change.parts.cbegin(); part != change.parts.cend(); ++part)
            execute(QStringLiteral("INSERT OR REPLACE INTO parts (name, content) VALUES (?, ?)"),
                {part.key(), QString::fromUtf8(part.value())});
        for (const DocumentRow& row : change.documents)
            execute(QStringLiteral("INSERT INTO documents (number, record, entry, page) VALUES (?, ?, ?, ?)"),
                {row.number, QString::fromUtf8(row.record), QString::fromUtf8(row.entry),
                    QString::fromUtf8(row.page)});
    });
}

void StateStore::copyTo(const QString& fileName) const
{
    execute(QStringLiteral("VACUUM INTO ?"), {fileName});
}

void StateStore::together(const std::function<void()>& statements)
{
    execute(QStringLiteral("BEGIN IMMEDIATE"));
    try {
        statements();
        execute(QStringLiteral("COMMIT"));
    } catch (...) {
        QSqlQuery(QSqlDatabase::database(m_connection)).exec(QStringLiteral("ROLLBACK"));
        throw;
    }
}

QSqlQuery StateStore::execute(const QString& statement, const QVariantList& values) const
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    query.setForwardOnly(true);
    // What a preparation fails of is forgotten by an execution after it.
    if (!query.prepare(statement))
        fail(query.lastError().text());
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (!query.exec())
        fail(query.lastError().text());
    return query;
}

int StateStore::number(const QString& question) const
{
    QSqlQuery query = execute(question);
    return query.next() ? query.value(0).toInt() : 0;
}

void StateStore::fail(const QString& why) const
{
    throw MemoryError(why.trimmed());
}

} // namespace emulator
