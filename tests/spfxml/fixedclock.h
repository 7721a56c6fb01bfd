#pragma once

#include <mockfactory.h>

/// Stands in the place of the host's clock while it lives.
class FixedClock : public CurrentTime
{
public:
    FixedClock() { MockFactory<CurrentTime>::mocked = this; }
    FixedClock(const FixedClock&) = delete;
    FixedClock& operator=(const FixedClock&) = delete;
    ~FixedClock() override { MockFactory<CurrentTime>::mocked = nullptr; }

    QDateTime getCurrentDateTime() const override { return QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9)); }
};
