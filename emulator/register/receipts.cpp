#include "register/receipts.h"

#include "register/cashmovements.h"
#include "register/judgement.h"
#include "register/pages.h"
#include "register/parametertable.h"
#include "register/parts.h"
#include "register/printing.h"
#include "register/recording.h"

#include <utility>

namespace emulator {

Refusal Receipts::bindAgent(const QJsonObject& agent)
{
    if (const Refusal refusal = judgement::positions(m_parts.state.open.document); refusal != Refusal::None)
        return refusal;
    m_parts.state.open.agent = agent;
    return Refusal::None;
}

Refusal Receipts::addItem(Item item)
{
    OpenDocument& open = m_parts.state.open;
    if (const Refusal refusal = judgement::item(item, open); refusal != Refusal::None)
        return refusal;
    item.markingCode = std::exchange(open.marking, {});
    item.agent = std::exchange(open.agent, {});
    open.document.body += pages::position(m_parts, item);
    open.document.items.append(item);
    open.document.phase = Phase::Positions;
    return Refusal::None;
}

Refusal Receipts::subtotal()
{
    const Refusal refusal = judgement::subtotal(m_parts.state.open);
    if (refusal == Refusal::None)
        m_parts.state.open.document.phase = Phase::Subtotal;
    return refusal;
}

Refusal Receipts::pay(int kind, Money sum)
{
    Document& receipt = m_parts.state.open.document;
    if (const Refusal refusal = judgement::payment(receipt, kind, sum); refusal != Refusal::None)
        return refusal;
    receipt.payments[static_cast<size_t>(kind)] += sum;
    receipt.phase = Phase::Payment;
    return Refusal::None;
}

Refusal Receipts::close()
{
    Document& receipt = m_parts.state.open.document;
    if (const Refusal refusal = judgement::closing(receipt, m_parts); refusal != Refusal::None)
        return refusal;
    receipt.payments[0] += receipt.missing();
    settle(receipt);
    const FiscalRecord record = recording::storeReceipt(m_parts, receipt);
    if (receipt.cash() > 0 && m_parts.parameters.isOn(parameter::drawerOpens))
        CashMovements(m_parts).openDrawer();
    const tape::Page page = pages::receipt(m_parts, receipt, record);
    m_parts.drive.keepPrint(page);
    return printing::printOrHold(m_parts, page);
}

void Receipts::settle(const Document& receipt)
{
    State& state = m_parts.state;
    ++state.shift.receipts;
    state.shift.counters.countReceipt(receipt);
    state.shift.grandTotals.countReceipt(receipt);
    state.drawer.cash += receipt.type == DocumentType::Sale ? receipt.cash() : -receipt.cash();
    for (const Item& item : receipt.items)
        state.marking.sell(item.markingCode);
}

} // namespace emulator
