#pragma once

#include "drivemark.h"
#include "markreading.h"
#include "settledsale.h"
#include "verdict.h"

#include <QList>

#include <optional>

class AbstractFrDriver;

namespace sale {

class SaleJournal;

/// Asks the register for its fiscal drive and the number of the last document. A mark without a number comes
/// back when the readings never agree. Throws the driver's exceptions.
DriveMark noteDrive(AbstractFrDriver& driver, MarkReading reading = MarkReading::UntilTwoAgree);

/// Finds out what has become of a document that was begun when the drive had that mark. To be called after
/// connect and before init. A document that was not issued is left behind by the register too: it is
/// initialised, and asked once more, since the initialisation finishes a document that can only be finished.
/// Nothing is cancelled while the outcome is unknown. Throws the driver's exceptions when the register cannot
/// be asked; then it may be called again.
Verdict settle(
    AbstractFrDriver& driver, const DriveMark& before, MarkReading reading = MarkReading::UntilTwoAgree);
/// The same after a close that failed: connects first, and tells nothing when the register cannot be asked.
std::optional<Verdict> settleAfterFailure(
    AbstractFrDriver& driver, const DriveMark& before, MarkReading reading = MarkReading::UntilTwoAgree);

/// Settles the sales that earlier runs began on this fiscal drive and did not bring to their end. To be done
/// after each connect and before init, which cleans up the open document, and before any other document moves
/// the number. Throws JournalError and the driver's exceptions.
QList<SettledSale> settlePendingSales(
    AbstractFrDriver& driver, SaleJournal& journal, MarkReading reading = MarkReading::UntilTwoAgree);

} // namespace sale
