#pragma once

#include "configuration/configuration.h"
#include "program/options.h"

namespace frserver {

/// Serves until a signal ends it, or the program in the file takes its place. Gives the exit status; throws
/// when it cannot begin.
int serve(const Options& options, const Configuration& configuration);

} // namespace frserver
