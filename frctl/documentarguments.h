#pragma once

#include <QtGlobal>

namespace frctl {

struct Options;

// The one argument of some commands that make a document. Both throw UsageError.

/// Kopecks to put in or take out.
qint64 cashArgument(const Options& options);
/// The number of a document of the fiscal drive.
quint32 documentArgument(const Options& options);

} // namespace frctl
