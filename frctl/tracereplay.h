#pragma once

#include "options.h"
#include "output.h"
#include "trace/frame.h"

namespace frctl {

/// Serves the port, the link of a pty that it makes or tcp:host:port, until the trace is over and the host
/// has gone, or the user ends it. Throws UsageError and HostError for a port that cannot be served.
Output playRegister(const trace::Trace& trace, const QString& port);
/// Sends the requests to the register on the port and compares its answers. Throws UsageError and HostError.
Output playHost(const trace::Trace& trace, const QString& port, const Options& options);

} // namespace frctl
