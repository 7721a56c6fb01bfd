#pragma once

#include <QString>
#include <QVariant>

#include <functional>

class QSqlQuery;

namespace emulator {

/// A connection to an SQLite file. Every operation throws MemoryError with what SQLite says.
class Database
{
public:
    enum class Access { ReadOnly, ReadWrite };

    /// A file that is missing is made, but not for reading alone.
    Database(const QString& fileName, Access access);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    QSqlQuery execute(const QString& statement, const QVariantList& values = {}) const;
    /// The whole number that a question is answered with.
    int number(const QString& question) const;
    /// Statements that are done together or not at all.
    void together(const std::function<void()>& statements) const;

private:
    /// Name of the connection.
    QString m_connection;
};

} // namespace emulator
