#pragma once

#include "command.h"

namespace frctl {

/// One line for whoever has it wrong.
QString usageLine(const QString& command = {});
/// Of that command, with its options, an example and the exit statuses; of all without one. Throws UsageError
/// for a name that is none.
QString helpText(const QString& command);
Task prepareHelp(const Options& options);

} // namespace frctl
