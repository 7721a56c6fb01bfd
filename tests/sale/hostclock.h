// The host's clock, put forward, back or to a given time for as long as this lives.

#pragma once

#include "currenttime.h"
#include "mockfactory.h"

namespace sale {

class HostClock : public CurrentTime
{
public:
    explicit HostClock(qint64 ahead)
        : m_ahead(ahead)
    {
        MockFactory<CurrentTime>::mocked = this;
    }
    ~HostClock() override { MockFactory<CurrentTime>::mocked = nullptr; }
    HostClock(const HostClock&) = delete;
    HostClock& operator=(const HostClock&) = delete;

    QDateTime getCurrentDateTime() const override
    {
        return CurrentTime::getCurrentDateTime().addSecs(m_ahead);
    }

private:
    const qint64 m_ahead;
};

/// It stands still but for what a test makes of it.
class GivenTime : public HostClock
{
public:
    explicit GivenTime(const QDateTime& start)
        : HostClock(0)
        , time(start)
    {
    }
    QDateTime getCurrentDateTime() const override { return time; }

    QDateTime time;
};

} // namespace sale
