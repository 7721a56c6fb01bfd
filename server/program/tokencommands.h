#pragma once

#include "access/tokenfile.h"
#include "program/options.h"

namespace frserver {

/// frserver token: gives the exit status. Throws TokenError.
int runTokenCommand(const Options& options, TokenFile& tokens);

} // namespace frserver
