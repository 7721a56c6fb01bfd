#pragma once

#include "register/clock.h"

#include <QDateTime>

namespace emulator {

/// The clock inside the register: it runs with the one that it was given, as far from it as it was set.
class DeviceClock
{
public:
    explicit DeviceClock(const Clock& source)
        : m_source(source)
    {
    }

    QDateTime now() const { return QDateTime::fromMSecsSinceEpoch(m_source.milliseconds() + m_offset); }
    void set(const QDateTime& time) { m_offset = time.toMSecsSinceEpoch() - m_source.milliseconds(); }
    /// Milliseconds by which it is ahead of the clock that it was given.
    qint64 offset() const { return m_offset; }
    void setOffset(qint64 offset) { m_offset = offset; }
    /// For spans of time, which do not mind that the clock is set.
    qint64 milliseconds() const { return m_source.milliseconds(); }

private:
    const Clock& m_source;
    qint64 m_offset = 0;
};

} // namespace emulator
