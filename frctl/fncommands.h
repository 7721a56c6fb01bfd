#pragma once

#include "command.h"

namespace frctl {

Task prepareFn(const Options& options);
Task prepareOfd(const Options& options);
Task prepareRegistration(const Options& options);

} // namespace frctl
