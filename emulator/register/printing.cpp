#include "register/printing.h"

#include "register/parts.h"

namespace emulator {

Refusal printOrHold(Parts& parts, const QStringList& lines)
{
    OpenDocument& open = parts.state.open;
    if (!open.document.unprinted) {
        if (!parts.state.hasPaper) {
            open.document.phase = Phase::Unprinted;
            open.heldLines = lines;
            return Refusal::NoPaper;
        }
        parts.tape.print(lines);
    }
    open = OpenDocument();
    return Refusal::None;
}

} // namespace emulator
