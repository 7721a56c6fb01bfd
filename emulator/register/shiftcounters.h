#pragma once

#include "register/document.h"
#include "register/turnover.h"

namespace emulator {

/// What is counted from the opening of a shift to its closing report.
struct ShiftCounters
{
    Turnover sales;
    Turnover returns;
    Turnover cashIn;
    Turnover cashOut;
    int cancelled = 0;

    void countReceipt(const Document& receipt);
    void countMoney(const Document& money);
};

} // namespace emulator
