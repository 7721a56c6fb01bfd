#pragma once

#include "configuration/poolsettings.h"
#include "configuration/registersettings.h"
#include "configuration/servicesettings.h"

#include <QList>

namespace frserver {

/// What the service is told: sections [service], [store], [webhook], a [register NAME] for each
/// register and a [pool NAME] for each pool of them.
struct Configuration
{
    /// Throws ConfigurationError with all that is wrong.
    static Configuration read(const QString& fileName);

    ServiceSettings service = {};
    /// One at least, unless the journal is one of many machines.
    QList<RegisterSettings> registers = {};
    QList<PoolSettings> pools = {};
};

} // namespace frserver
