#include "worker/clockjudgement.h"

#include <sys/timex.h>

#include <cstdlib>

namespace frserver {

namespace {

/// A register tells minutes or seconds, and late.
constexpr qint64 leastSeconds = 5;
constexpr qint64 mostSeconds = 300;

/// Local times of a register know no daylight saving.
QDateTime plain(const QDateTime& time)
{
    return {time.date(), time.time(), Qt::UTC};
}

} // namespace

qint64 clockDifference(const QDateTime& registerTime, const QDateTime& now)
{
    return plain(now).secsTo(plain(registerTime));
}

bool mayClockBeSet(const ClockCase& given)
{
    if (!given.registerTime.isValid() || given.isShiftOpen || !given.isSynchronised)
        return false;
    const qint64 difference = std::abs(clockDifference(given.registerTime, given.now));
    const bool isBehindDocument
        = given.lastDocument.isValid() && plain(given.now) < plain(given.lastDocument);
    return difference >= leastSeconds && difference <= mostSeconds && !isBehindDocument;
}

bool isComputerClockSynchronised()
{
    timex state{};
    return ::adjtimex(&state) != TIME_ERROR && (state.status & STA_UNSYNC) == 0;
}

} // namespace frserver
