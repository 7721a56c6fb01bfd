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

    QDateTime now() const { return QDateTime::fromMSecsSinceEpoch(shown()); }
    void set(const QDateTime& time) { setShown(time.toMSecsSinceEpoch()); }
    /// Milliseconds by which it is ahead of the clock that it was given.
    qint64 offset() const { return shown() - m_source.milliseconds(); }
    void setOffset(qint64 offset) { setShown(m_source.milliseconds() + offset); }
    double speed() const { return m_speed; }
    void setSpeed(double speed)
    {
        setShown(shown());
        m_speed = speed;
    }
    /// For spans of time, which do not mind that the clock is set.
    qint64 milliseconds() const { return m_source.milliseconds(); }

private:
    qint64 shown() const
    {
        const qint64 passed = m_source.milliseconds() - m_setAt;
        return m_setTo + (m_speed == 1 ? passed : static_cast<qint64>(static_cast<double>(passed) * m_speed));
    }
    void setShown(qint64 milliseconds)
    {
        m_setAt = m_source.milliseconds();
        m_setTo = milliseconds;
    }

    const Clock& m_source;
    /// What it was set to, and when that was by the other one.
    qint64 m_setTo = 0;
    qint64 m_setAt = 0;
    double m_speed = 1;
};

} // namespace emulator
