#pragma once

#include "fruser.h"
#include "knownmark.h"
#include "markpolicy.h"
#include "registerline.h"

#include <optional>

namespace sale {

class IdentifiedSale;

/// What a host may choose when it issues a receipt.
struct IssueOptions
{
    RegisterLine line = {};
    /// The sale on its way through the journal, which it is written down in before and after; not owned.
    /// Without one nobody knows of the receipt when this program dies. On an exclusive register documents
    /// that the journal does not know are a failure then, see requireKnown.
    IdentifiedSale* sale = nullptr;
    /// What becomes of the receipt when the register does not find its marking codes good.
    MarkPolicy markPolicy = MarkPolicy::Warn;
    /// Saves questions on an exclusive register: IssueResult::after of the document before, or the last one
    /// that a journal knows.
    std::optional<KnownMark> known = {};
    /// For a receipt that names none.
    FrUser cashier = {};
    /// As DocumentOptions::opensShift.
    bool opensShift = true;
};

} // namespace sale
