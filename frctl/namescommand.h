#pragma once

#include "command.h"

namespace frctl {

/// All that it takes.
QStringList listNames();
Task prepareNames(const Options& options);

} // namespace frctl
