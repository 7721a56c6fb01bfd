#pragma once

#include "configuration/registersettings.h"
#include "configuration/servicesettings.h"

#include <QList>

namespace frserver {

/// What the service is told: sections [service], [store], [webhook] and a [register NAME] for each register.
struct Configuration
{
    /// Throws ConfigurationError with all that is wrong.
    static Configuration read(const QString& fileName);

    ServiceSettings service = {};
    /// One at least.
    QList<RegisterSettings> registers = {};
};

} // namespace frserver
