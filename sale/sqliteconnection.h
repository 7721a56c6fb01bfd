#pragma once

#include "journalerror.h"
#include "sqlconnection.h"

#include <memory>
#include <utility>

class QSqlError;

namespace sale {

class PreparedStatements;

/// An SQLite file that several programs write, each time to the disk itself. All operations throw
/// JournalError.
class SqliteConnection : public SqlConnection
{
public:
    /// Makes file and folder where they are missing; the file for the group of its folder. ":memory:" is no
    /// file. Patience is how long another program may have it locked.
    SqliteConnection(const QString& fileName, int patienceMs);
    ~SqliteConnection() override;

    const QString& fileName() const { return m_fileName; }
    /// From now on readers and writers do not wait for each other; the file is changed for that.
    void keepLogAhead();
    int execute(const QString& statement, const QVariantList& values = {}) override;
    void select(const QString& statement, const QVariantList& values,
        const std::function<void(const QSqlQuery&)>& onRow) const override;
    /// While no other program writes.
    void together(const std::function<void()>& statements) override;
    /// Another file beside this one, under a name of its own until it is detached; whole, or what is wrong is
    /// told of that file.
    void attach(const QString& fileName, const QString& schema);
    void detach(const QString& schema);
    /// Into an empty file.
    void copyTo(const QString& fileName) const;

private:
    void open();
    /// From now on it is waited so long for another program.
    void waitFor(int milliseconds) const;
    /// Begins to write, as soon as no other program does.
    void begin();
    JournalError fault(const QSqlError& error) const;
    void requireFile() const;
    QSqlQuery run(const QString& statement, const QVariantList& values) const;
    void requireWhole(const QString& fileName, const QString& schema);

    const QString m_fileName;
    const int m_patienceMs;
    /// The file that is beside it; empty without one.
    QString m_attached;
    /// Device and number of the file, of which the path is only a name; empty for none.
    std::pair<quint64, quint64> m_identity;
    /// How long it is waited for another program now.
    mutable int m_waitingMs;
    const std::unique_ptr<PreparedStatements> m_statements;
};

} // namespace sale
