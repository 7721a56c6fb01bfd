#include "basicfrsettings.h"

BasicFrSettings::BasicFrSettings(QObject* parent)
    : QObject(parent)
{
}

BasicFrSettings::~BasicFrSettings() = default;

void BasicFrSettings::mergeOptions(const hw::fr::DriverOptions& options)
{
    m_options.insert(options);
}
