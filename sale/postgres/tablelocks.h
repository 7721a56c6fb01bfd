#pragma once

#include <QMutex>
#include <QSet>
#include <QString>

namespace sale {

/// Tables of ours that somebody has locked, or waits to, as ALTER TABLE does behind a long report: whoever
/// wants them meanwhile waits behind that. Once one of this process has done so in vain the others look
/// first, which takes no lock, and wait for none.
class TableLocks
{
public:
    static TableLocks& ofProcess();

    /// Somebody has waited in vain there, for a table or for a row.
    void suspect(const QString& server);
    bool isSuspected(const QString& server);
    /// There are none.
    void clear(const QString& server);

    /// What the server is asked: the table, the server's process that has the lock or comes next, and whether
    /// not even readers get in.
    static const QString& question();
    static bool isInTheWayOf(const QString& statement, const QString& table, bool isForReaders);

private:
    QMutex m_mutex;
    QSet<QString> m_suspected;
};

} // namespace sale
