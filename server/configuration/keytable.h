#pragma once

#include "configuration/poolsettings.h"
#include "configuration/registersettings.h"
#include "configuration/servicesettings.h"

#include <QList>

namespace frserver {

/// A key of a section, and how its value gets into the settings; that throws SettingError.
template <typename Settings>
struct KeyRow
{
    const char* key;
    void (*take)(const QString& value, Settings& settings);
};

/// @name The keys of each section
/// @{
const QList<KeyRow<RegisterSettings>>& registerKeys();
const QList<KeyRow<PoolSettings>>& poolKeys();
const QList<KeyRow<ServiceSettings>>& serviceKeys();
const QList<KeyRow<ServiceSettings>>& storeKeys();
const QList<KeyRow<ServiceSettings>>& webhookKeys();
/// @}

} // namespace frserver
