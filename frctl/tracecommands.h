#pragma once

#include "options.h"
#include "task.h"

namespace frctl {

/// Shows a trace, compares two, or plays one to a register or to a host.
Task prepareTrace(const Options& options);

} // namespace frctl
