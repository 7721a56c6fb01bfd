#pragma once

#include "documentresult.h"
#include "documentsteps.h"

class AbstractFrDriver;

namespace sale {

/// Runs the steps up to the first that fails, and does what is right for the document then. Throws nothing: a
/// failure is in the result. An exception that is none of the contract's, such as a host's device throws to
/// interrupt a driver, ends the work too: the document is cancelled as after a failure, which the device may
/// interrupt once more, but a close is not settled.
DocumentResult runDocument(AbstractFrDriver& driver, const DocumentSteps& steps);

} // namespace sale
