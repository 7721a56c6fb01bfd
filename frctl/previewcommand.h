#pragma once

#include "options.h"
#include "task.h"

namespace frctl {

Task preparePreview(const Options& options);

} // namespace frctl
