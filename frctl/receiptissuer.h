#pragma once

#include "command.h"
#include "receipt.h"

namespace frctl {

class IdentifiedSale;

/// Issues the receipt: shift, marking codes, document, positions, payments, close. Finds out after a failed
/// close whether the document was issued. Throws RegisterError with the verdict. A sale with an id is written
/// down before and after.
Output issueReceipt(AbstractFrDriver& driver, const Receipt& receipt, IdentifiedSale* sale = nullptr);

} // namespace frctl
