#pragma once

#include "command.h"

namespace frctl {

Task prepareXReport(const Options& options);
Task prepareZReport(const Options& options);
Task prepareAccountingReport(const Options& options);
Task preparePrintDocument(const Options& options);
Task preparePrintLastDocument(const Options& options);

} // namespace frctl
