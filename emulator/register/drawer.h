#pragma once

#include "register/amounts.h"

#include <limits>

namespace emulator {

/// The cash drawer. Times are those of the clock's milliseconds.
struct Drawer
{
    Money cash = 0;
    qint64 openedAt = std::numeric_limits<qint64>::min() / 2;

    /// The cashier pushes it shut a few seconds after it sprang open.
    bool isOpen(qint64 milliseconds) const { return milliseconds - openedAt < staysOpen; }

    static constexpr qint64 staysOpen = 10'000;
};

} // namespace emulator
