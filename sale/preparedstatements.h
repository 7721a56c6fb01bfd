#pragma once

#include <QHash>
#include <QSqlQuery>

#include <unordered_map>

class QSqlDatabase;

namespace sale {

/// Statements of one database that were run before. To prepare one takes longer than it mostly runs, and a
/// document needs some dozens, the same ones each time.
class PreparedStatements
{
public:
    /// Ready to be run, or with the error of its preparation. It is nobody else's until it is kept.
    QSqlQuery take(const QString& statement, const QSqlDatabase& database);
    /// It ran, and its rows are done with. One that failed is better thrown away.
    void keep(QSqlQuery&& query);

private:
    std::unordered_map<QString, QSqlQuery> m_queries;
};

} // namespace sale
