#pragma once

#include "fninfo.h"
#include "healthcheck.h"

#include <QList>

namespace frctl {

/// How long the fiscal drive lasts, and what it has not sent yet.
QList<HealthCheck> driveChecks(const FnInfo& info, const QDateTime& now, bool isHex);

} // namespace frctl
