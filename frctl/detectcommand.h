#pragma once

#include "task.h"

namespace frctl {

struct Options;

/// Lists the serial ports, and asks those that are named whether a register is there.
Task prepareDetect(const Options& options);

} // namespace frctl
