#pragma once

#include "documentoptions.h"
#include "documentresult.h"
#include "documentsteps.h"
#include "movement.h"

class AbstractFrDriver;

namespace sale {

/// Makes a document that is no receipt: cash in or out, the opening or closing of the shift, a report that
/// the fiscal drive numbers. Before cash the shift is opened if need be. After a failure or a refusal the
/// register's counters tell what has become of it, never the text; settle and issued of the steps are filled
/// in here. Where the driver may have sent the request more than once (all of this over XML), the document is
/// counted after a success, too. The document is written into the journal on its way, unless there is none;
/// on an exclusive register documents that the journal does not know are a failure then, but for cash, which
/// the drive does not number, see requireKnown.
/// Throws nothing: a failure is in the result.
DocumentResult issueDocument(AbstractFrDriver& driver, const Movement& ours, const DocumentSteps& steps,
    const DocumentOptions& options);

/// The same for a document that leaves no trace in the register: an X report, a text, a copy. The fiscal
/// drive does not number them, no sum and no count moves, and the shift stays as it is, so a mark before and
/// one after would be the same whether it was printed or not. Nothing is asked, and what was broken off is
/// unknown. Without a cashier in the options it has none.
DocumentResult issueTraceless(
    AbstractFrDriver& driver, const DocumentSteps& steps, const DocumentOptions& options);

} // namespace sale
