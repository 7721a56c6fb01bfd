#pragma once

#include "outcome.h"

#include <QList>
#include <QString>

#include <optional>

class AbstractFrDriver;

namespace frctl {

class SaleJournal;

/// Asks the register for its fiscal drive and the number of the last document.
DriveMark noteDrive(AbstractFrDriver& driver);

/// Finds out what has become of a document that was begun when the drive had that mark. A document that was
/// not issued is left behind by the register too: it is initialised, and asked once more, since the
/// initialisation finishes a document that can only be finished. Nothing is cancelled while the outcome is
/// unknown. Throws the driver's exceptions when the register cannot be asked.
DocumentVerdict settle(AbstractFrDriver& driver, const DriveMark& before);
/// The same after a close that failed: connects first, and tells nothing when the register cannot be asked.
std::optional<DocumentVerdict> settleAfterFailure(AbstractFrDriver& driver, const DriveMark& before);

/// A sale of an earlier run whose outcome was found out.
struct SettledSale
{
    QString id;
    DocumentVerdict verdict;
};

/// Settles the sales that earlier runs began on this fiscal drive and did not bring to their end. To be done
/// after each connect and before init, which cleans up the open document, and before any other document moves
/// the number.
QList<SettledSale> settlePendingSales(AbstractFrDriver& driver, SaleJournal& journal);

} // namespace frctl
