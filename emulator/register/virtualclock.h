#pragma once

#include "register/clock.h"

#include <QDateTime>

namespace emulator {

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
