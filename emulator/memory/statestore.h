#pragma once

#include "memory/database.h"
#include "memory/statechange.h"

namespace emulator {

/// The file of a state. A file that is damaged, of another program or of a newer version is refused and left
/// as it is, one of an older version is brought up to this one. Every operation throws MemoryError.
class StateStore
{
public:
    /// A file that is missing is made, but not for reading alone.
    explicit StateStore(const QString& fileName, Database::Access access = Database::Access::ReadWrite);

    /// All parts by name; none in a new file.
    QMap<QString, QByteArray> parts() const;
    QList<DocumentRow> documents() const;
    /// The greatest number of a document, 0 without any.
    quint32 lastDocument() const;
    /// Writes all of it to the disk itself, or nothing.
    void write(const StateChange& change);
    /// Writes a copy as of now into a file that must not exist.
    void copyTo(const QString& fileName) const;

private:
    /// Throws when the database is none of ours; gives the version of its format, 0 for a new one.
    int checkedVersion() const;
    void makeReady(int version);

    Database m_database;
};

} // namespace emulator
