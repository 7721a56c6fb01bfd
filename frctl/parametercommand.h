#pragma once

#include "command.h"

namespace frctl {

Task prepareParams(const Options& options);

} // namespace frctl
