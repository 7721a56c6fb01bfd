#pragma once

#include "options.h"
#include "output.h"
#include "trace/frame.h"

namespace frctl {

/// Sends the requests to the register on the port and compares its answers. Before the first one the register
/// is asked who it is, where the options say which one is meant, or where the trace does more than ask: that
/// goes to a test drive alone, unless it is forced. Throws UsageError, devices::ConnectionError, HostError,
/// Refusal and sale::WrongRegister.
Output playHost(const trace::Trace& trace, const QString& port, const Options& options);

} // namespace frctl
