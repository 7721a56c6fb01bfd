#pragma once

#include "command.h"
#include "receipt.h"

namespace frctl {

/// Issues the receipt: shift, marking codes, document, positions, payments, close. Throws RegisterError.
Output issueReceipt(AbstractFrDriver& driver, const Receipt& receipt);

} // namespace frctl
