#include "register/shifts.h"

#include "register/judgement.h"
#include "register/pages.h"
#include "register/parametertable.h"
#include "register/parts.h"
#include "register/printing.h"
#include "register/reports.h"

namespace emulator {

Refusal Shifts::open(const Cashier& cashier)
{
    if (const Refusal refusal = judgement::ready(m_parts.state); refusal != Refusal::None)
        return refusal;
    if (m_parts.state.shift.isOpen)
        return Refusal::WrongState;
    if (const Refusal refusal = judgement::newDocuments(m_parts); refusal != Refusal::None)
        return refusal;
    m_parts.state.shift.begin(m_parts.clock.now());
    return Reports(m_parts).issue(FiscalType::ShiftOpening, cashier);
}

Refusal Shifts::close(const Cashier& cashier)
{
    if (const Refusal refusal = judgement::ready(m_parts.state); refusal != Refusal::None)
        return refusal;
    Shift& shift = m_parts.state.shift;
    if (!shift.isOpen)
        return Refusal::WrongState;
    Money& cash = m_parts.state.drawer.cash;
    if (m_parts.parameters.isOn(parameter::automaticCollection))
        cash = 0;
    const Refusal printed = Reports(m_parts).issue(FiscalType::ShiftClosing, cashier,
        {{QStringLiteral("receipts"), shift.receipts},
            {QStringLiteral("sales"), moneyText(shift.counters.sales.sum)},
            {QStringLiteral("returns"), moneyText(shift.counters.returns.sum)},
            {QStringLiteral("cashInDrawer"), moneyText(cash)}});
    shift.end();
    return printed;
}

Refusal Shifts::printTotals(const Cashier& cashier)
{
    if (const Refusal refusal = judgement::ready(m_parts.state); refusal != Refusal::None)
        return refusal;
    if (!m_parts.state.shift.isOpen)
        return Refusal::WrongState;
    return printing::printOrQueue(m_parts, pages::totals(m_parts, cashier));
}

} // namespace emulator
