#include "register/documents.h"

#include "register/cashmovements.h"
#include "register/judgement.h"
#include "register/pages.h"
#include "register/pagewriter.h"
#include "register/parts.h"
#include "register/printing.h"
#include "register/receipts.h"

namespace emulator {

Refusal Documents::open(const Document& head)
{
    Document document = head;
    document.phase = Phase::Open;
    document.unprinted = head.unprinted && head.isReceipt() && m_parts.identity.electronicWithoutPaper;
    const Refusal refusal = judgement::opening(document, m_parts);
    if (refusal == Refusal::None)
        m_parts.state.open.document = document;
    return refusal;
}

Refusal Documents::printText(const QString& text, int attribute)
{
    return print(PageWriter(m_parts).text(text, tape::attributesOf(attribute)).lines());
}

Refusal Documents::print(const QList<tape::Line>& lines)
{
    if (const Refusal refusal = judgement::printing(m_parts.state); refusal != Refusal::None)
        return refusal;
    m_parts.state.open.document.printedPart() += lines;
    return Refusal::None;
}

Refusal Documents::finish()
{
    const OpenDocument& open = m_parts.state.open;
    if (!open.document.isOpen())
        return Refusal::NoDocument;
    if (const Refusal refusal = judgement::printer(m_parts.state.paper);
        refusal != Refusal::None && !open.document.unprinted)
        return refusal;
    if (open.document.isStored())
        return printing::printOrHold(m_parts, open.held);
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
    const bool printed = m_parts.state.paper.canPrint() && !document.unprinted;
    // Paper that ends on the note leaves the document cancelled.
    const Refusal refusal
        = printed ? printing::printOrQueue(m_parts, pages::cancelled(m_parts, document)) : Refusal::None;
    drop();
    return refusal;
}

void Documents::drop()
{
    const OpenDocument& open = m_parts.state.open;
    if (!open.held.lines.isEmpty())
        m_parts.state.paper.waiting.append(
            {open.document.isReceipt() ? m_parts.drive.last().number : 0, open.held});
    m_parts.state.open = OpenDocument();
}

} // namespace emulator
