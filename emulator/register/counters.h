#pragma once

#include "register/document.h"

namespace emulator {

/// Number and sum of one kind of document.
struct Turnover
{
    int count = 0;
    Money sum = 0;
    /// How it was paid; only receipts use it. Cash stands without the change.
    Payments payments{};
};

/// What is counted from the opening of a shift to its closing report.
struct ShiftCounters
{
    Turnover sales;
    Turnover returns;
    Turnover cashIn;
    Turnover cashOut;
    int cancelled = 0;
    int nonFiscal = 0;
};

} // namespace emulator
