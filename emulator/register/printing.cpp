#include "register/printing.h"

#include "register/parts.h"
#include "tape/pagetext.h"

#include <utility>

namespace emulator::printing {

namespace {

// What did not get onto the paper.
tape::Page print(Parts& parts, const tape::Page& page, quint32 document)
{
    qsizetype printed = 0;
    for (; printed < page.lines.size(); ++printed) {
        const qsizetype height = tape::toText(page.lines.at(printed), page.width).size();
        if (parts.state.paper.take(height) < height)
            break;
    }
    if (printed > 0)
        parts.tape.print({page.width, page.lines.first(printed)}, document);
    return {page.width, page.lines.mid(printed)};
}

Refusal paperEnded(const Paper& paper)
{
    return paper.endsQuietly ? Refusal::None : Refusal::NoPaper;
}

} // namespace

Refusal printOrHold(Parts& parts, const tape::Page& page)
{
    OpenDocument& open = parts.state.open;
    const quint32 number = open.document.isReceipt() ? parts.drive.last().number : 0;
    const tape::Page rest = open.document.unprinted ? tape::Page() : print(parts, page, number);
    if (rest.lines.isEmpty()) {
        open = OpenDocument();
        return Refusal::None;
    }
    open.document.phase = Phase::Unprinted;
    open.held = rest;
    return paperEnded(parts.state.paper);
}

Refusal printOrQueue(Parts& parts, const tape::Page& page, quint32 document)
{
    const tape::Page rest = print(parts, page, document);
    if (rest.lines.isEmpty())
        return Refusal::None;
    parts.state.paper.waiting.append({document, rest});
    return paperEnded(parts.state.paper);
}

void renewPaper(Parts& parts)
{
    Paper fresh;
    fresh.isCoverOpen = parts.state.paper.isCoverOpen;
    fresh.waiting = parts.state.paper.waiting;
    parts.state.paper = fresh;
    printWaiting(parts);
}

void printWaiting(Parts& parts)
{
    if (!parts.state.paper.canPrint())
        return;
    for (const WaitingPage& waiting : std::exchange(parts.state.paper.waiting, {}))
        printOrQueue(parts, waiting.page, waiting.document);
}

} // namespace emulator::printing
