#pragma once

#include "issueoptions.h"
#include "issueresult.h"
#include "receipt.h"

class AbstractFrDriver;

namespace sale {

/// Issues the receipt: cashier and tax system, shift, marking codes, document, positions, payments (cash
/// last), close. The driver is connected and initialised. The cashier is the receipt's, else that of the
/// options; the tax system the receipt's, else the registered one where there is one alone; without them
/// nothing is begun. Marking codes that the register does not find good end the work before the document is
/// opened, as the options have it. Finds out after a failed close whether the document was issued.
///
/// Throws nothing that the driver, the journal or the host's device throw: it is in the result.
IssueResult issueReceipt(
    AbstractFrDriver& driver, const receipt::Receipt& receipt, const IssueOptions& options = {});

} // namespace sale
