#pragma once

#include "command.h"

namespace frctl {

Task prepareConfig(const Options& options);

} // namespace frctl
