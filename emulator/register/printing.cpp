#include "register/printing.h"

#include "register/parts.h"

#include <utility>

namespace emulator::printing {

namespace {

// What did not get onto the paper.
QStringList print(Parts& parts, const QStringList& lines)
{
    const qsizetype printed = parts.state.paper.take(lines.size());
    if (printed > 0)
        parts.tape.print(lines.first(printed));
    return lines.mid(printed);
}

Refusal paperEnded(const Paper& paper)
{
    return paper.endsQuietly ? Refusal::None : Refusal::NoPaper;
}

} // namespace

Refusal printOrHold(Parts& parts, const QStringList& lines)
{
    OpenDocument& open = parts.state.open;
    const QStringList rest = open.document.unprinted ? QStringList() : print(parts, lines);
    if (rest.isEmpty()) {
        open = OpenDocument();
        return Refusal::None;
    }
    open.document.phase = Phase::Unprinted;
    open.heldLines = rest;
    return paperEnded(parts.state.paper);
}

Refusal printOrQueue(Parts& parts, const QStringList& lines)
{
    const QStringList rest = print(parts, lines);
    parts.state.paper.waiting += rest;
    return rest.isEmpty() ? Refusal::None : paperEnded(parts.state.paper);
}

void renewPaper(Parts& parts)
{
    const QStringList waiting = std::exchange(parts.state.paper, Paper()).waiting;
    if (!waiting.isEmpty())
        print(parts, waiting);
}

} // namespace emulator::printing
