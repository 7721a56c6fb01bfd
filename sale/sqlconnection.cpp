#include "sqlconnection.h"

#include <QSqlQuery>

namespace sale {

QVariant SqlConnection::value(const QString& statement, const QVariantList& values) const
{
    QVariant result;
    select(statement, values, [&result](const QSqlQuery& row) {
        if (!result.isValid())
            result = row.value(0);
    });
    return result;
}

} // namespace sale
