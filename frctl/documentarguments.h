#pragma once

#include <QtGlobal>

namespace frctl {

struct Options;

// The one argument of some commands that make a document.

/// Kopecks to put in or take out. Throws UsageError.
qint64 cashArgument(const Options& options);
/// The number of a document of the fiscal drive. Throws UsageError.
quint32 documentArgument(const Options& options);
/// Throws ReceiptError for a return that is to be sold, and for a sale that is to be refunded.
void refuseOtherCommand(const Options& options, bool isReturn);

} // namespace frctl
