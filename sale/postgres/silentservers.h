#pragma once

#include <QDeadlineTimer>
#include <QHash>
#include <QMutex>
#include <QSet>
#include <QString>

namespace sale {

/// Servers that keep this process waiting, and do not answer. One that did not take a new connection is left
/// some time before another one asks, so that a service with a vanished database still answers its clients;
/// one that refuses at once is asked as often as may be. One that did not answer a question is not waited for
/// as long by the other connections, of which each may be as dead.
class SilentServers
{
public:
    static SilentServers& ofProcess();

    /// It took no connection, and was waited for so long.
    void note(const QString& server, qint64 tookMs);
    /// Milliseconds that it is left still; 0 for one that may be asked.
    qint64 restOf(const QString& server);
    /// It has not answered a question in time.
    void suspect(const QString& server);
    bool isSuspected(const QString& server);
    /// It has answered something.
    void clear(const QString& server);

private:
    QMutex m_mutex;
    QHash<QString, QDeadlineTimer> m_rests;
    QSet<QString> m_suspected;
};

} // namespace sale
