#pragma once

#include "currenttime.h"
#include "mockfactory.h"
#include "register/clock.h"

namespace preview {

/// As long as it lives, the clock of this host, plugin included, is that of a software register.
class VirtualTime : public CurrentTime
{
public:
    explicit VirtualTime(const emulator::Clock& clock)
        : m_clock(clock)
    {
        MockFactory<CurrentTime>::mocked = this;
    }
    ~VirtualTime() override { MockFactory<CurrentTime>::mocked = nullptr; }
    VirtualTime(const VirtualTime&) = delete;
    VirtualTime& operator=(const VirtualTime&) = delete;

    QDateTime getCurrentDateTime() const override
    {
        return QDateTime::fromMSecsSinceEpoch(m_clock.milliseconds());
    }

private:
    const emulator::Clock& m_clock;
};

} // namespace preview
