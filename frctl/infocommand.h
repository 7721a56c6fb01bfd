#pragma once

#include "command.h"

namespace frctl {

Task prepareInfo(const Options& options);

} // namespace frctl
