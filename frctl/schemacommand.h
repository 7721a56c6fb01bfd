#pragma once

#include "task.h"

namespace frctl {

struct Options;

/// Prints the schema of the receipts or of the answers.
Task prepareSchema(const Options& options);

} // namespace frctl
