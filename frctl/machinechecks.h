#pragma once

#include "healthcheck.h"

#include <QList>

namespace frctl {

struct Options;

/// What may stand in the way on the computer's side: plugin, rights, programs that grab ports, power saving,
/// journal. About the port of the options, or all serial ports when they have none. Sends nothing.
QList<HealthCheck> machineChecks(const Options& options);

} // namespace frctl
