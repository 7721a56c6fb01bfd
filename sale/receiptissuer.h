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
/// Asks for the registered tax systems where the receipt names none, for the shift and the mark (see
/// noteMark), and about each marking code; after a failure connects and asks what settle asks. With a sale in
/// the options it is written down before the document is opened, and its verdict behind it.
///
/// Throws nothing that the driver, the journal or the host's device throw: it is in the result.
IssueResult issueReceipt(
    AbstractFrDriver& driver, const receipt::Receipt& receipt, const IssueOptions& options = {});

} // namespace sale
