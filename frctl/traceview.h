#pragma once

#include "output.h"
#include "trace/frame.h"

namespace frctl {

/// The frames in words, one after the other, with colours where a terminal shows them.
Output traceView(const trace::Trace& trace);

} // namespace frctl
