#pragma once

#include "cashdesk.h"
#include "options.h"

namespace frctl {

/// The verdict on a document that is no receipt; None where there was nothing to do. Throws RegisterError or
/// Interrupted with what is known of one that did not go well, also when the driver made more than one of it;
/// whatever is neither of the register nor of the journal, as it came.
sale::Verdict verdictOf(const Options& options, const sale::DocumentResult& result);

} // namespace frctl
