#include "register/shift.h"

namespace emulator {

namespace {

constexpr qint64 longestShift = qint64(24) * 60 * 60;

} // namespace

bool Shift::isTooLong(const QDateTime& now) const
{
    return isOpen && opened.secsTo(now) > longestShift;
}

void Shift::begin(const QDateTime& now)
{
    isOpen = true;
    ++number;
    receipts = 0;
    opened = now;
    counters = ShiftCounters();
}

void Shift::end()
{
    isOpen = false;
    counters = ShiftCounters();
}

} // namespace emulator
