#pragma once

#include "output.h"
#include "trace/frame.h"

#include <QString>

namespace frctl {

/// Serves the port, the link of a pty that it makes or tcp:host:port, until the trace is over and the host
/// has gone, or the user ends it. What is refused is told at once. Throws UsageError and HostError for a port
/// that cannot be served.
Output playRegister(const trace::Trace& trace, const QString& port);

} // namespace frctl
