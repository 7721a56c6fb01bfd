#pragma once

#include "command.h"

namespace frctl {

Task prepareHeader(const Options& options);
Task prepareTail(const Options& options);
Task prepareLogo(const Options& options);

} // namespace frctl
