#include "memory/database.h"

#include "memory/memoryerror.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <QUuid>

namespace emulator {

namespace {

[[noreturn]] void fail(const QString& why)
{
    throw MemoryError(why.trimmed());
}

// SQLite makes files of its own beside one that it reads. Where it may not, the file is all there is as long
// as nobody works on it, and then it has no log.
bool isFrozen(const QString& fileName, Database::Access access)
{
    return access == Database::Access::ReadOnly && !QFile::exists(fileName + QStringLiteral("-wal"))
        && !QFileInfo(QFileInfo(fileName).path()).isWritable();
}

QString frozenName(const QString& fileName)
{
    QUrl url = QUrl::fromLocalFile(QFileInfo(fileName).absoluteFilePath());
    url.setQuery(QStringLiteral("immutable=1"));
    return url.toString(QUrl::FullyEncoded);
}

} // namespace

Database::Database(const QString& fileName, Access access)
    : m_connection(QUuid::createUuid().toString())
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(isFrozen(fileName, access) ? frozenName(fileName) : fileName);
    // A reader may meet the writer; nobody else writes, and whoever does is not waited for.
    database.setConnectOptions(access == Access::ReadOnly
            ? QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=1000")
            : QStringLiteral("QSQLITE_BUSY_TIMEOUT=100"));
    if (!database.open()) {
        const QString error = database.lastError().text();
        database = {};
        QSqlDatabase::removeDatabase(m_connection);
        fail(error);
    }
}

Database::~Database()
{
    QSqlDatabase::database(m_connection, false).close();
    QSqlDatabase::removeDatabase(m_connection);
}

QSqlQuery Database::execute(const QString& statement, const QVariantList& values) const
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

int Database::number(const QString& question) const
{
    QSqlQuery query = execute(question);
    return query.next() ? query.value(0).toInt() : 0;
}

void Database::together(const std::function<void()>& statements) const
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

} // namespace emulator
