#pragma once

#include "command.h"

namespace frctl {

Task prepareNames(const Options& options);

} // namespace frctl
