#include "frspfsettings.h"

FrSpfSettings::FrSpfSettings(QObject* parent)
    : BasicFrSettings(parent)
{
}

FrSpfSettings::~FrSpfSettings() = default;
