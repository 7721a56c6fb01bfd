#pragma once

#include "register/clock.h"

#include <QDateTime>

namespace emulator {

/// The clock inside the register: it runs with the one that it was given, as far from it as it was set, or so
/// many times as fast.
class DeviceClock
{
public:
    explicit DeviceClock(const Clock& source)
        : m_source(source)
    {
    }

    QDateTime now() const
    {
        const qint64 source = m_source.milliseconds();
        return QDateTime::fromMSecsSinceEpoch(source + offsetAt(source));
    }
    void set(const QDateTime& time)
    {
        m_setAt = m_source.milliseconds();
        m_offset = time.toMSecsSinceEpoch() - m_setAt;
    }
    /// Milliseconds by which it is ahead of the clock that it was given.
    qint64 offset() const { return offsetAt(m_source.milliseconds()); }
    void setOffset(qint64 offset)
    {
        m_setAt = m_source.milliseconds();
        m_offset = offset;
    }
    double speed() const { return m_speed; }
    void setSpeed(double speed)
    {
        const qint64 source = m_source.milliseconds();
        m_offset = offsetAt(source);
        m_setAt = source;
        m_speed = speed;
    }
    /// For spans of time, which do not mind that the clock is set.
    qint64 milliseconds() const { return m_source.milliseconds(); }

private:
    /// At the usual speed always the same, whenever it is asked for.
    qint64 offsetAt(qint64 source) const
    {
        const auto gained = static_cast<double>(source - m_setAt) * (m_speed - 1);
        return m_offset + static_cast<qint64>(gained);
    }

    const Clock& m_source;
    /// How far it was ahead when it was set, and when that was by the other one.
    qint64 m_offset = 0;
    qint64 m_setAt = 0;
    double m_speed = 1;
};

} // namespace emulator
