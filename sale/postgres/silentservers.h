#pragma once

#include <QDeadlineTimer>
#include <QHash>
#include <QMutex>
#include <QString>

namespace sale {

/// Servers that have kept a connection of this process waiting, and have not answered: they are left some
/// time before another one asks, so that a service with a vanished database still answers its clients. One
/// that refuses at once is asked as often as may be.
class SilentServers
{
public:
    static SilentServers& ofProcess();

    /// It did not answer, and was waited for so long.
    void note(const QString& server, qint64 tookMs);
    bool isResting(const QString& server);

private:
    QMutex m_mutex;
    QHash<QString, QDeadlineTimer> m_rests;
};

} // namespace sale
