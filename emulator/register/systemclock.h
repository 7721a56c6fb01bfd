#pragma once

#include "register/clock.h"

#include <QDateTime>

namespace emulator {

class SystemClock : public Clock
{
public:
    /// So many milliseconds ahead of the computer's clock.
    explicit SystemClock(qint64 ahead = 0)
        : m_ahead(ahead)
    {
    }
    qint64 milliseconds() const override { return QDateTime::currentMSecsSinceEpoch() + m_ahead; }

private:
    qint64 m_ahead;
};

} // namespace emulator
