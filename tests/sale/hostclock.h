// The host's clock, put forward or back, or as it is told, for as long as this lives.

#pragma once

#include "currenttime.h"
#include "mockfactory.h"

#include <functional>

namespace sale {

class HostClock : public CurrentTime
{
public:
    explicit HostClock(qint64 secondsAhead)
        : HostClock([this, secondsAhead] { return CurrentTime::getCurrentDateTime().addSecs(secondsAhead); })
    {
    }
    explicit HostClock(const std::function<QDateTime()>& time)
        : m_time(time)
    {
        MockFactory<CurrentTime>::mocked = this;
    }
    ~HostClock() override { MockFactory<CurrentTime>::mocked = nullptr; }
    HostClock(const HostClock&) = delete;
    HostClock& operator=(const HostClock&) = delete;

    QDateTime getCurrentDateTime() const override { return m_time(); }

private:
    const std::function<QDateTime()> m_time;
};

} // namespace sale
