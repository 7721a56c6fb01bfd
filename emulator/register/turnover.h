#pragma once

#include "register/payments.h"

namespace emulator {

/// Number and sum of one kind of document.
struct Turnover
{
    int count = 0;
    Money sum = 0;
    /// How it was paid; only receipts use it. Cash stands without the change.
    Payments payments{};
};

} // namespace emulator
