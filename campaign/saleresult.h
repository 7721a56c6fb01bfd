#pragma once

#include "fault.h"
#include "outcome.h"

#include <QString>

/// What the host believes about its sale.
struct SaleResult
{
    bool isIssued() const { return outcome == sale::Outcome::Issued; }
    bool hasFailed() const { return !failure.isEmpty(); }

    /// What the journal says, which a host goes by: Issued, NotIssued or Unknown.
    sale::Outcome outcome = sale::Outcome::NotIssued;
    /// The closing call did not come back well.
    bool hasCloseFailed = false;
    /// Up to the failure.
    QList<FaultKind> faults;
    /// What neighbours did until the verdict.
    QList<FaultKind> deeds;
    /// Empty for a sale that went well.
    QString failure;
};
