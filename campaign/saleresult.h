#pragma once

#include "fault.h"
#include "outcome.h"

#include <QString>

#include <optional>

/// What the host believes about its sale.
struct SaleResult
{
    /// The closing call came back well.
    bool issued = false;
    /// Only when the closing call failed.
    std::optional<sale::Outcome> verdict;
    /// Up to the failure.
    QList<FaultKind> faults;
    /// Empty for a sale that went well.
    QString failure;
};
