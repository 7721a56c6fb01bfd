#pragma once

#include "api/waitingplace.h"

#include <QStringList>

namespace frserver {

/// Registers that are posted to together, as the interface works them.
class Pool : public WaitingPlace
{
public:
    /// What the configuration says of it.
    struct Settings
    {
        QString name;
        /// Those of this service.
        QStringList registers = {};
        QString inn = {};
        /// By their names in receipts, which alone it takes; empty for any.
        QStringList taxSystems = {};
        /// Seconds in which a document is begun that says nothing of it; 0 for any time.
        int startBefore = 0;
    };

    explicit Pool(const Settings& settings)
        : m_settings(settings)
    {
    }

    const Settings& settings() const { return m_settings; }

private:
    Settings m_settings;
};

} // namespace frserver
