#include "postgres/tablelocks.h"

#include <QMutexLocker>
#include <QRegularExpression>

namespace sale {

namespace {

bool isReading(const QString& statement)
{
    return statement.startsWith(QStringLiteral("SELECT ")) && !statement.contains(QStringLiteral(" FOR "));
}

} // namespace

TableLocks& TableLocks::ofProcess()
{
    static TableLocks locks;
    return locks;
}

void TableLocks::suspect(const QString& server)
{
    const QMutexLocker lock(&m_mutex);
    m_suspected.insert(server);
}

bool TableLocks::isSuspected(const QString& server)
{
    const QMutexLocker lock(&m_mutex);
    return m_suspected.contains(server);
}

void TableLocks::clear(const QString& server)
{
    const QMutexLocker lock(&m_mutex);
    m_suspected.remove(server);
}

const QString& TableLocks::question()
{
    // That of an index, or of a month, is one of the table that statements name: of years of months there are
    // hundreds.
    static const QString text = QStringLiteral(
        "SELECT DISTINCT relname, coalesce(pid, 0), mode = 'AccessExclusiveLock', granted FROM pg_locks "
        "LEFT JOIN pg_index ON indexrelid = relation "
        "JOIN pg_class ON pg_class.oid = coalesce(pg_partition_root(coalesce(indrelid, relation)), "
        "indrelid, relation) "
        "WHERE locktype = 'relation' AND relnamespace = to_regnamespace('frspf') "
        "AND database = (SELECT oid FROM pg_database WHERE datname = current_database()) "
        "AND pid IS DISTINCT FROM pg_backend_pid() AND mode IN "
        "('ShareLock', 'ShareRowExclusiveLock', 'ExclusiveLock', 'AccessExclusiveLock') "
        "ORDER BY granted DESC");
    return text;
}

bool TableLocks::isInTheWayOf(const QString& statement, const QString& table, bool isForReaders)
{
    const QRegularExpression use(
        QStringLiteral("\\b(FROM|JOIN|INTO|UPDATE|LIKE|TABLE) %1\\b").arg(QRegularExpression::escape(table)));
    return (isForReaders || !isReading(statement)) && statement.contains(use);
}

} // namespace sale
