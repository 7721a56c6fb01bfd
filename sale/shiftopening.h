#pragma once

#include "documentoptions.h"
#include "verdict.h"

class AbstractFrDriver;

namespace sale {

/// Whether the shift is open, asked as it costs the fewest exchanges: one over HEX, two over XML, whose
/// driver's own answer is a fixed one.
bool isShiftOpen(AbstractFrDriver& driver, const RegisterLine& line);

/// Opens the shift ahead of a document that finds it closed, unless the options forbid it (ShiftIsClosed):
/// with a journal as a document of its own, under an id of its own and with the cashier of the one that it is
/// opened for. The verdict has its number where that is known. An answer that was lost does not matter when
/// the register has opened it. Throws what the opening failed of.
Verdict openShiftAhead(AbstractFrDriver& driver, const DocumentOptions& options);

} // namespace sale
