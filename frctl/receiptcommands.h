#pragma once

#include "command.h"

namespace frctl {

/// Of sell and of refund.
Task prepareReceipt(const Options& options);
Task prepareCashIn(const Options& options);
Task prepareCashOut(const Options& options);
Task preparePrint(const Options& options);

} // namespace frctl
