#pragma once

#include "command.h"

namespace frctl {

/// All that is done with the journal, by the first argument.
Task prepareJournal(const Options& options);

} // namespace frctl
