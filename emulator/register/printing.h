#pragma once

#include "register/refusal.h"

#include <QStringList>

namespace emulator {

struct Parts;

/// Putting lines onto the paper, which may end on any of them.
namespace printing {

/// Prints the open document that the register is done with and forgets it. Without paper the document stays
/// open as an unprinted one, and its lines wait for it to be finished once more.
Refusal printOrHold(Parts& parts, const QStringList& lines);
/// Prints a page that no document is open for; what is left of it is printed when there is paper again.
Refusal printOrQueue(Parts& parts, const QStringList& lines);
/// A new roll: the lines that wait for it are printed.
void renewPaper(Parts& parts);

} // namespace printing

} // namespace emulator
