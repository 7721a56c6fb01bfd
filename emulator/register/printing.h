#pragma once

#include "register/refusal.h"
#include "tape/page.h"

namespace emulator {

struct Parts;

/// Putting pages onto the paper, which may end on any line. A picture or a code that it ends in is printed
/// anew on the next roll.
namespace printing {

/// Prints the open document that the register is done with and forgets it. Without paper the document stays
/// open as an unprinted one, and the rest of it waits for it to be finished once more.
Refusal printOrHold(Parts& parts, const tape::Page& page);
/// Prints a page that no document is open for, of that one of the fiscal drive or of none; what is left of it
/// is printed when there is paper again.
Refusal printOrQueue(Parts& parts, const tape::Page& page, quint32 document = 0);
/// A new roll: what waits for it is printed.
void renewPaper(Parts& parts);
/// What waits is printed, as far as it gets onto the paper.
void printWaiting(Parts& parts);

} // namespace printing

} // namespace emulator
