#pragma once

#include "memory/statechange.h"

#include <QVariant>

#include <functional>

class QSqlQuery;

namespace emulator {

/// The file of a state: an SQLite database. A file that is damaged, of another program or of a newer version
/// is refused and left as it is, one of an older version is brought up to this one. Every operation throws
/// MemoryError.
class StateStore
{
public:
    enum class Access { ReadOnly, ReadWrite };

    /// A file that is missing is made, but not for reading alone.
    explicit StateStore(const QString& fileName, Access access = Access::ReadWrite);
    ~StateStore();
    StateStore(const StateStore&) = delete;
    StateStore& operator=(const StateStore&) = delete;

    /// All parts by name; none in a new file.
    QMap<QString, QByteArray> parts() const;
    QList<DocumentRow> documents() const;
    /// Writes all of it to the disk itself, or nothing.
    void write(const StateChange& change);
    /// Writes a copy as of now into a file that must not exist.
    void copyTo(const QString& fileName) const;

private:
    void open(Access access);
    void close();
    void check(Access access);
    void create();
    void migrate(int version);
    /// Statements that are done together or not at all.
    void together(const std::function<void()>& statements);
    QSqlQuery execute(const QString& statement, const QVariantList& values = {}) const;
    int number(const QString& question) const;
    [[noreturn]] void fail(const QString& why) const;

    QString m_fileName;
    /// Name of the database connection.
    QString m_connection;
};

} // namespace emulator
