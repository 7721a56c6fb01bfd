#include "register/shiftcounters.h"

namespace emulator {

void ShiftCounters::countReceipt(const Document& receipt)
{
    Turnover& turnover = receipt.type == DocumentType::Sale ? sales : returns;
    ++turnover.count;
    turnover.sum += receipt.total();
    for (size_t kind = 0; kind < paymentKinds; ++kind)
        turnover.payments[kind] += receipt.payments[kind];
    turnover.payments[0] -= receipt.change();
}

void ShiftCounters::countMoney(const Document& money)
{
    Turnover& turnover = money.type == DocumentType::CashIn ? cashIn : cashOut;
    ++turnover.count;
    turnover.sum += money.money;
}

} // namespace emulator
