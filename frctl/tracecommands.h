#pragma once

#include "options.h"
#include "task.h"

#include <QList>
#include <QString>

#include <utility>

namespace frctl {

/// Shows a trace, compares two, or plays one to a register or to a host.
Task prepareTrace(const Options& options);

/// Usage and help of each of its actions.
QList<std::pair<QString, QString>> traceActions();

} // namespace frctl
