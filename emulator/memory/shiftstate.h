#pragma once

#include "register/shift.h"

namespace emulator {

// The shift and its counters as the state has them. Archive is StateWriter or StateReader.

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Turnover>& turnover)
{
    archive.field("count", turnover.count);
    archive.field("sum", turnover.sum);
    archive.field("payments", turnover.payments);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<ShiftCounters>& counters)
{
    archive.field("sales", counters.sales);
    archive.field("returns", counters.returns);
    archive.field("cashIn", counters.cashIn);
    archive.field("cashOut", counters.cashOut);
    archive.field("cancelled", counters.cancelled);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Shift>& shift)
{
    archive.field("isOpen", shift.isOpen);
    archive.field("number", shift.number);
    archive.field("receipts", shift.receipts);
    archive.field("opened", shift.opened);
    archive.require(!shift.isOpen || shift.opened.isValid(), "opened");
    archive.field("counters", shift.counters);
    archive.field("grandTotals", shift.grandTotals);
}

} // namespace emulator
