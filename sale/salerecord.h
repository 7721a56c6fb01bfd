#pragma once

#include "drivemark.h"
#include "movement.h"
#include "verdict.h"

#include <QByteArray>
#include <QString>

namespace sale {

/// A sale with an id, as the journal keeps it.
struct SaleRecord
{
    QString id;
    /// Fingerprint of the receipt.
    QByteArray receipt;
    /// Issued, NotIssued or Unknown; None while the sale is under way, or when the program ended before it
    /// knew.
    Verdict verdict;
    /// The register before the document was opened.
    DriveMark before;
    /// What the document would move.
    Movement ours = {};
};

} // namespace sale
