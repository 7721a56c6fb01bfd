#include "register/cashmovements.h"

#include "register/judgement.h"
#include "register/pages.h"
#include "register/parts.h"
#include "register/printing.h"
#include "register/recording.h"

namespace emulator {

Refusal CashMovements::openDrawer()
{
    m_parts.state.drawer.springOpen(m_parts.clock.milliseconds());
    return Refusal::None;
}

Refusal CashMovements::setSum(Money sum)
{
    if (const Refusal refusal = judgement::money(m_parts.state, sum); refusal != Refusal::None)
        return refusal;
    m_parts.state.open.document.money = sum;
    m_parts.state.open.document.phase = Phase::Payment;
    return Refusal::None;
}

Refusal CashMovements::close()
{
    const Document& document = m_parts.state.open.document;
    if (document.phase != Phase::Payment)
        return Refusal::WrongState;
    m_parts.state.shift.counters.countMoney(document);
    m_parts.state.drawer.cash += document.type == DocumentType::CashIn ? document.money : -document.money;
    recording::noteMoney(m_parts, document);
    return printing::printOrHold(m_parts, pages::money(m_parts, document));
}

} // namespace emulator
