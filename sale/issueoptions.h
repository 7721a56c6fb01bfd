#pragma once

#include "fruser.h"
#include "knownmark.h"
#include "markpolicy.h"
#include "registerline.h"

#include <optional>

namespace sale {

class IdentifiedSale;
class SaleJournal;

/// What a host may choose when it issues a receipt.
struct IssueOptions
{
    RegisterLine line = {};
    /// A sale with an id is written down before and after; not owned, may be null.
    IdentifiedSale* sale = nullptr;
    /// What becomes of the receipt when the register does not find its marking codes good.
    MarkPolicy markPolicy = MarkPolicy::Warn;
    /// Keeps the marked goods of a receipt without an id, so that a piece that is sold twice is noticed; a
    /// sale with an id has them in its own journal. Not owned, may be null. When it fails, this is a warning.
    SaleJournal* journal = nullptr;
    /// Saves questions on an exclusive register: IssueResult::after of the document before, or the last one
    /// that a journal knows.
    std::optional<KnownMark> known = {};
    /// For a receipt that names none.
    FrUser cashier = {};
};

} // namespace sale
