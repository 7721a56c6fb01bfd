#pragma once

#include "options.h"

namespace frctl {

/// Sends the log to stderr, from the level on; none of it without one. QT_LOGGING_RULES still overrules it.
void setUpLogging(Options::LogLevel level);

} // namespace frctl
