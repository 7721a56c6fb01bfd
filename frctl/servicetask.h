#pragma once

#include "options.h"
#include "task.h"

namespace frctl {

/// The task of a command whose register is a service's. Throws UsageError for a command or an option that
/// does not go through a service, before anything is sent.
Task serviceTask(const Options& options);

} // namespace frctl
