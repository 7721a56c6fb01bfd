#pragma once

#include "trace/frame.h"

#include <QStringList>

namespace trace {

/// How the second trace differs from the first, a line each, up to that many; empty when they are the same
/// but for times, ids, and how often a host asked whether the register lives. Where only one of them is
/// masked, what the mask hides is no difference.
QStringList differencesBetween(const Trace& first, const Trace& second, qsizetype most);

} // namespace trace
