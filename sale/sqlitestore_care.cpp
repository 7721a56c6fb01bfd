#include "sqlitestore.h"

#include "journalfault.h"

#include <QFile>
#include <QSqlQuery>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace sale {

void SqliteStore::backUp(const QString& fileName)
{
    // As secret as the journal, whatever the mask is; SQLite takes an empty file.
    const int file
        = ::open(QFile::encodeName(fileName).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        throw copyFault(fileName, errno);
    try {
        m_connection.copyTo(fileName);
    } catch (const JournalError&) {
        ::close(file);
        QFile::remove(fileName);
        throw;
    }
    const int error = ::fsync(file) == 0 ? 0 : errno;
    ::close(file);
    if (error != 0)
        throw copyFault(fileName, error);
}

QStringList SqliteStore::damages() const
{
    QStringList found;
    m_connection.select(QStringLiteral("PRAGMA integrity_check"), {}, [&found](const QSqlQuery& row) {
        if (row.value(0).toString() != QStringLiteral("ok"))
            found.append(row.value(0).toString());
    });
    return found;
}

int SqliteStore::anonymise(const QDateTime& before)
{
    const int documents = SqlStore::anonymise(before);
    // The log beside the file has the texts too.
    m_connection.value(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    return documents;
}

} // namespace sale
