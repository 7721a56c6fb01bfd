#pragma once

#include "journalerror.h"

#include <QString>
#include <QVariant>

#include <functional>

class QSqlError;
class QSqlQuery;

namespace sale {

/// An SQLite file that several programs write, each time to the disk itself. All operations throw
/// JournalError.
class SqliteConnection
{
public:
    /// Makes file and folder where they are missing; the file for the group of its folder. ":memory:" is no
    /// file. Patience is how long another program may have it locked.
    SqliteConnection(const QString& fileName, int patienceMs);
    ~SqliteConnection();
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;

    const QString& fileName() const { return m_fileName; }
    /// From now on readers and writers do not wait for each other; the file is changed for that.
    void keepLogAhead();
    /// Gives the number of rows that were written.
    int execute(const QString& statement, const QVariantList& values = {});
    /// Gives each row to the function.
    void select(const QString& statement, const QVariantList& values,
        const std::function<void(const QSqlQuery&)>& onRow) const;
    /// The first column of the first row; invalid when there is none.
    QVariant value(const QString& statement, const QVariantList& values = {}) const;
    /// Statements that are done together or not at all, while no other program writes.
    void together(const std::function<void()>& statements);
    /// Another file beside this one, under a name of its own until it is detached; whole, or what is wrong is
    /// told of that file.
    void attach(const QString& fileName, const QString& schema);
    void detach(const QString& schema);
    /// Into an empty file.
    void copyTo(const QString& fileName) const;

private:
    void open();
    void close();
    void setPatience(int ms);
    /// Begins to write, as soon as no other program does.
    void begin();
    JournalError fault(const QSqlError& error) const;
    QSqlQuery run(const QString& statement, const QVariantList& values) const;
    void requireWhole(const QString& fileName, const QString& schema);

    const QString m_fileName;
    const int m_patienceMs;
    /// Name of the database connection.
    const QString m_connection;
    /// The file that is beside it; empty without one.
    QString m_attached;
};

} // namespace sale
