#pragma once

#include <QDateTime>

namespace emulator {

/// Where the register gets its time from. All waiting of the emulator is expressed in this time, so that a
/// test can let hours pass in no time.
class Clock
{
public:
    virtual ~Clock() = default;
    /// Milliseconds since 1970, UTC.
    virtual qint64 milliseconds() const = 0;
};

class SystemClock : public Clock
{
public:
    qint64 milliseconds() const override { return QDateTime::currentMSecsSinceEpoch(); }
};

/// A clock that stands still until it is told to move.
class VirtualClock : public Clock
{
public:
    explicit VirtualClock(const QDateTime& start = QDateTime(QDate(2024, 3, 1), QTime(9, 0)))
        : m_milliseconds(start.toMSecsSinceEpoch())
    {
    }
    qint64 milliseconds() const override { return m_milliseconds; }
    void advance(qint64 milliseconds) { m_milliseconds += milliseconds; }

private:
    qint64 m_milliseconds;
};

} // namespace emulator
