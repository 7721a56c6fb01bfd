#pragma once

#include "currenttime.h"
#include "register/clock.h"

/// The host's clock, which is the register's.
class HostTime : public CurrentTime
{
public:
    explicit HostTime(const emulator::Clock& clock)
        : m_clock(clock)
    {
    }
    QDateTime getCurrentDateTime() const override
    {
        return QDateTime::fromMSecsSinceEpoch(m_clock.milliseconds());
    }

private:
    const emulator::Clock& m_clock;
};
