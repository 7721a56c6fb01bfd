#pragma once

#include "register/amounts.h"

#include <limits>

namespace emulator {

/// The cash drawer. Times are those of the clock's milliseconds.
struct Drawer
{
    Money cash = 0;
    /// Nobody pushes it shut.
    bool isHeld = false;
    qint64 openedAt = longAgo;

    /// The cashier pushes it shut a few seconds after it sprang open.
    bool isOpen(qint64 milliseconds) const { return isHeld || milliseconds - openedAt < staysOpen; }

    /// A host had it opened: the cashier who shuts it is there again.
    void springOpen(qint64 milliseconds)
    {
        isHeld = false;
        openedAt = milliseconds;
    }
    void shut()
    {
        isHeld = false;
        openedAt = longAgo;
    }

    static constexpr qint64 longAgo = std::numeric_limits<qint64>::min() / 2;
    static constexpr qint64 staysOpen = 10'000;
};

} // namespace emulator
