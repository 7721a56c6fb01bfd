#include "register/documents.h"

#include "register/cashmovements.h"
#include "register/judgement.h"
#include "register/page.h"
#include "register/pages.h"
#include "register/parts.h"
#include "register/printing.h"
#include "register/receipts.h"

namespace emulator {

Refusal Documents::open(const Document& head)
{
    if (const Refusal refusal = judgement::opening(head, m_parts); refusal != Refusal::None)
        return refusal;
    m_parts.state.open.document = head;
    m_parts.state.open.document.phase = Phase::Open;
    return Refusal::None;
}

Refusal Documents::printText(const QString& text, int attribute)
{
    return print(Page(m_parts.identity.width).attributed(text, attribute));
}

Refusal Documents::printPicture(const QString& title, const QString& data)
{
    return print(Page(m_parts.identity.width).frame(title, data));
}

Refusal Documents::print(const Page& page)
{
    if (const Refusal refusal = judgement::printing(m_parts.state); refusal != Refusal::None)
        return refusal;
    m_parts.state.open.document.printedPart() += page.lines();
    return Refusal::None;
}

Refusal Documents::finish()
{
    const OpenDocument& open = m_parts.state.open;
    if (!open.document.isOpen())
        return Refusal::NoDocument;
    if (!open.document.unprinted && !m_parts.state.paper.isIn)
        return Refusal::NoPaper;
    if (open.document.isStored())
        return printing::printOrHold(m_parts, open.heldLines);
    if (open.document.isReceipt())
        return Receipts(m_parts).close();
    if (open.document.isMoney())
        return CashMovements(m_parts).close();
    return printing::printOrHold(m_parts, pages::text(m_parts, open.document));
}

Refusal Documents::cancel()
{
    Document& document = m_parts.state.open.document;
    if (!document.isOpen())
        return Refusal::WrongState;
    if (document.isStored()) {
        document.phase = Phase::CancelImpossible;
        return Refusal::WrongState;
    }
    ++m_parts.state.shift.counters.cancelled;
    if (m_parts.state.paper.isIn && !document.unprinted)
        printing::printOrQueue(m_parts, pages::cancelled(m_parts, document));
    drop();
    return Refusal::None;
}

void Documents::drop()
{
    m_parts.state.paper.waiting += m_parts.state.open.heldLines;
    m_parts.state.open = OpenDocument();
}

} // namespace emulator
