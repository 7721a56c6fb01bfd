#include "preparedstatements.h"

#include <QSqlDatabase>

namespace sale {

namespace {

/// Far more than a program has; those of searches have a form for each set of what is looked for.
constexpr size_t mostKept = 100;

/// Some of the others take effect when they are prepared.
bool isWorthKeeping(const QString& statement)
{
    return statement.startsWith(QStringLiteral("SELECT ")) || statement.startsWith(QStringLiteral("INSERT "))
        || statement.startsWith(QStringLiteral("UPDATE ")) || statement.startsWith(QStringLiteral("DELETE "))
        || statement == QStringLiteral("COMMIT");
}

} // namespace

QSqlQuery PreparedStatements::take(const QString& statement, const QSqlDatabase& database)
{
    if (auto known = m_queries.extract(statement))
        return std::move(known.mapped());
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.prepare(statement);
    return query;
}

void PreparedStatements::keep(QSqlQuery&& query)
{
    const QString statement = query.lastQuery();
    if (!isWorthKeeping(statement))
        return;
    // While it is active it keeps others from writing, and the values of a large one take memory.
    query.finish();
    if (m_queries.size() >= mostKept)
        m_queries.clear();
    m_queries.insert_or_assign(statement, std::move(query));
}

} // namespace sale
