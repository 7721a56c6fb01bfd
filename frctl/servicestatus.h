#pragma once

#include "options.h"
#include "output.h"

namespace frctl {

/// The register as a service tells it, in the words of the command status; what it does not tell is null.
/// Throws HostError, UsageError and Interrupted.
Output serviceStatus(const Options& options, const QByteArray& token);

} // namespace frctl
