#pragma once

#include "task.h"

namespace frctl {

struct Options;

/// Judges receipts without a register: all that would refuse them, and what would be printed otherwise.
Task prepareCheck(const Options& options);

} // namespace frctl
