#pragma once

#include "options.h"
#include "output.h"

class AbstractFrDriver;

namespace frctl {

/// Whether the file is sound; status 1 when it is not.
Output checkFile(const Options& options);
/// The same, and whether the receipts of the open shift are all that its counters have.
Output checkShift(AbstractFrDriver& driver, const Options& options);

} // namespace frctl
