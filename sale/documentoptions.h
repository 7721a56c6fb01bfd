#pragma once

#include "fruser.h"
#include "registerline.h"

namespace sale {

class IdentifiedSale;

/// What a host may choose for a document that is no receipt.
struct DocumentOptions
{
    RegisterLine line = {};
    FrUser cashier = {};
    /// The document on its way through the journal, as IssueOptions::sale.
    IdentifiedSale* sale = nullptr;
    /// Where the document finds the shift closed; else it is refused.
    bool opensShift = true;
};

} // namespace sale
