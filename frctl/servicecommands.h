#pragma once

#include "command.h"

namespace frctl {

Task prepareStatus(const Options& options);
Task prepareOpenShift(const Options& options);
Task prepareCancel(const Options& options);
Task prepareDrawer(const Options& options);
Task prepareTime(const Options& options);
Task prepareMark(const Options& options);

} // namespace frctl
