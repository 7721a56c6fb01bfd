#pragma once

#include "task.h"

namespace frctl {

struct Options;

/// Tells in a line each what may keep this computer and the register from selling.
Task prepareDoctor(const Options& options);

} // namespace frctl
