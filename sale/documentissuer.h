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
/// on an exclusive register documents that the journal does not know are a failure then, see requireKnown.
/// Throws nothing: a failure is in the result.
DocumentResult issueDocument(AbstractFrDriver& driver, const Movement& ours, const DocumentSteps& steps,
    const DocumentOptions& options);

/// The same for a document that leaves no trace in the register, such as an X report or a text: nothing is
/// asked, and what was broken off is unknown. Without a cashier in the options it has none.
DocumentResult issueTraceless(
    AbstractFrDriver& driver, const DocumentSteps& steps, const DocumentOptions& options);

} // namespace sale
