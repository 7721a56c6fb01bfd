#pragma once

#include "drivemark.h"
#include "registerline.h"

#include <optional>

class AbstractFrDriver;

namespace sale {

/// Asks the register for the mark before a document of that kind, with as few exchanges as it takes (HEX: six
/// for receipts and cash, thirteen for others; XML: four for receipts, seven for cash, two readings of two
/// for others). A value that the register does not tell is empty. Throws the driver's exceptions.
DriveMark noteMark(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind);
/// The same over a protocol without check values as soon as two readings in a row agree; empty when none do.
DriveMark noteMarkTwice(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind);
/// The same when something has failed: with all that is told, and over a protocol without check values as
/// soon as two readings in a row agree; empty when none do.
DriveMark noteMarkAfterFailure(AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind);

/// Asks, with two exchanges and on a register that nobody else works, whether the mark of an earlier document
/// of this connection still holds: that mark then, with the sums of this kind.
std::optional<DriveMark> confirmMark(
    AbstractFrDriver& driver, const RegisterLine& line, DocumentKind kind, const DriveMark& earlier);

} // namespace sale
