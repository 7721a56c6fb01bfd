#pragma once

#include <QDateTime>
#include <QElapsedTimer>

#include <functional>

namespace frserver {

/// The times that a register's agent goes by.
struct AgentClock
{
    static AgentClock system()
    {
        QElapsedTimer timer;
        timer.start();
        return {[] { return QDateTime::currentDateTimeUtc(); }, [timer] { return timer.elapsed(); }};
    }

    /// UTC; may jump.
    std::function<QDateTime()> now;
    /// Milliseconds since some moment, which never jump.
    std::function<qint64()> steady;
};

} // namespace frserver
