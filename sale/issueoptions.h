#pragma once

#include "markreading.h"

namespace sale {

class IdentifiedSale;

/// What a host may choose when it issues a receipt.
struct IssueOptions
{
    MarkReading markReading = MarkReading::UntilTwoAgree;
    /// A sale with an id is written down before and after; not owned, may be null.
    IdentifiedSale* sale = nullptr;
};

} // namespace sale
