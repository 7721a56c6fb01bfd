#pragma once

#include "command.h"

namespace frctl {

Task prepareCounters(const Options& options);
Task prepareRegisters(const Options& options);

} // namespace frctl
