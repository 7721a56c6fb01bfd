#include "sqlconnection.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace sale {

SqlConnection::SqlConnection()
    : m_name(QUuid::createUuid().toString())
{
}

SqlConnection::~SqlConnection()
{
    close();
}

QSqlDatabase SqlConnection::make(const QString& driver) const
{
    // One that was found lost while nobody asked it is there still.
    close();
    return QSqlDatabase::addDatabase(driver, m_name);
}

QSqlDatabase SqlConnection::database() const
{
    return QSqlDatabase::database(m_name, false);
}

void SqlConnection::close() const
{
    database().close();
    QSqlDatabase::removeDatabase(m_name);
}

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
