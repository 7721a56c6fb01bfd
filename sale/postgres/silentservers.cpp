#include "postgres/silentservers.h"

#include <QMutexLocker>

namespace sale {

SilentServers& SilentServers::ofProcess()
{
    static SilentServers servers;
    return servers;
}

void SilentServers::note(const QString& server, qint64 tookMs)
{
    // Whoever waits for one that has vanished does so for 2 s at least.
    constexpr qint64 longMs = 1'500;
    constexpr qint64 restMs = 10'000;
    if (tookMs < longMs)
        return;
    const QMutexLocker lock(&m_mutex);
    m_rests.insert(server, QDeadlineTimer(restMs));
}

qint64 SilentServers::restOf(const QString& server)
{
    const QMutexLocker lock(&m_mutex);
    const auto found = m_rests.constFind(server);
    return found == m_rests.cend() ? 0 : found->remainingTime();
}

void SilentServers::suspect(const QString& server)
{
    // So that a service comes to answering its clients before it waits for that server again.
    constexpr qint64 restMs = 1'000;
    const QMutexLocker lock(&m_mutex);
    m_suspected.insert(server);
    m_rests.insert(server, QDeadlineTimer(restMs));
}

bool SilentServers::isSuspected(const QString& server)
{
    const QMutexLocker lock(&m_mutex);
    return m_suspected.contains(server);
}

void SilentServers::clear(const QString& server)
{
    const QMutexLocker lock(&m_mutex);
    m_rests.remove(server);
    m_suspected.remove(server);
}

} // namespace sale
