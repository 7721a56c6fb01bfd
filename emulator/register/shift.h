#pragma once

#include "register/shiftcounters.h"

#include <QDateTime>

namespace emulator {

/// The shift and all that is counted in it.
struct Shift
{
    bool isOpen = false;
    int number = 0;
    /// Receipts of the shift; they start anew when the next one opens, not when this one closes.
    int receipts = 0;
    QDateTime opened;
    ShiftCounters counters;
    /// Receipts since the fiscal drive was put in.
    ShiftCounters grandTotals;

    bool isTooLong(const QDateTime& now) const;
    void begin(const QDateTime& now);
    void end();
};

} // namespace emulator
