#include "basicfiscalregister.h"

#include "abstractfrdriver.h"
#include "abstractserialdriver.h"

#include <QVariant>

namespace hw {

BasicFiscalRegister::BasicFiscalRegister(
    const QSharedPointer<BasicFrSettings>& registerSettings, QObject* parent)
    : QObject(parent)
    , settings(registerSettings)
{
}

BasicFiscalRegister::~BasicFiscalRegister()
{
    delete driver;
}

AbstractFrDriver* BasicFiscalRegister::getLegacyDriver()
{
    return driver;
}

AbstractPrinter* BasicFiscalRegister::getPrinter()
{
    return nullptr;
}

unsigned int BasicFiscalRegister::getDeviceId() const
{
    return settings->getDeviceId();
}

QSharedPointer<AbstractUpgradeManager> BasicFiscalRegister::getUpgradeManager() const
{
    return {};
}

bool BasicFiscalRegister::isSpeedEnumerate() const
{
    return settings->isSpeedEnumerate();
}

void BasicFiscalRegister::setSpeedEnumerate(bool enumerate)
{
    settings->setSpeedEnumerate(enumerate);
}

void BasicFiscalRegister::setDeviceId(unsigned int deviceId)
{
    settings->setDeviceId(deviceId);
}

int BasicFiscalRegister::getHardwareClass() const
{
    return 64;
}

void BasicFiscalRegister::setDriverOptions(const hw::fr::DriverOptions& options)
{
    settings->mergeOptions(options);
}

void BasicFiscalRegister::addUnusedProperties(const QList<QString>& names)
{
    unusedProperties.append(names);
    setProperty("unusedProps", QVariant(unusedProperties));
}

} // namespace hw
