#pragma once

#include "command.h"

namespace frctl {

Task prepareSell(const Options& options);
Task prepareRefund(const Options& options);
Task prepareCashIn(const Options& options);
Task prepareCashOut(const Options& options);
Task preparePrint(const Options& options);

} // namespace frctl
