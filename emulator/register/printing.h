#pragma once

#include "register/refusal.h"

#include <QStringList>

namespace emulator {

struct Parts;

/// Prints the open document that the register is done with and forgets it. Without paper the document stays
/// open as an unprinted one, and its lines wait for it to be finished once more.
Refusal printOrHold(Parts& parts, const QStringList& lines);

} // namespace emulator
