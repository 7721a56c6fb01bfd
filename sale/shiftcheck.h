#pragma once

#include "registerline.h"
#include "sumdifference.h"

#include <QList>

#include <optional>

class AbstractFrDriver;

namespace sale {

class DocumentStore;

/// Whether the receipts of the open shift that the journal has as issued are all that the register's counters
/// have: a difference is of receipts that others made. Nothing when the shift is closed, which has no
/// counters. Asks whether it is open and the mark before a sale and before a return, see noteMark. Throws
/// JournalError and the driver's exceptions.
std::optional<QList<SumDifference>> shiftDifferences(
    AbstractFrDriver& driver, const DocumentStore& store, const RegisterLine& line);

} // namespace sale
