#pragma once

#include "fnstatusinfo.h"
#include "fnutils.h"
#include "ofdstatusinfo.h"

#include <QString>

/// All that a driver can tell of the fiscal drive. What it does not know stays in its empty state.
struct FnInfo
{
    FnUtils::ValidityDate validityDate;
    FnStatusInfo fnStatus;
    OfdStatusInfo ofdStatus;
    QString fnVersion;
    QString ffdVersion;
    /// Notifications of sold marked goods that were not sent yet.
    qint32 unsentNotifications = 0;
};
