#include "basicfiscalregister.h"

#include "abstractfrdriver.h"
#include "abstractserialdriver.h"

#include <QVariant>

namespace hw {

BasicFiscalRegister::BasicFiscalRegister(
    const QSharedPointer<BasicFrSettings>& registerSettings, QObject* parent)
    : QObject(parent)
    , m_settings(registerSettings)
{
}

BasicFiscalRegister::~BasicFiscalRegister()
{
    delete m_driver;
}

AbstractFrDriver* BasicFiscalRegister::getLegacyDriver()
{
    return m_driver;
}

AbstractPrinter* BasicFiscalRegister::getPrinter()
{
    return nullptr;
}

unsigned int BasicFiscalRegister::getDeviceId() const
{
    return m_settings->getDeviceId();
}

QSharedPointer<AbstractUpgradeManager> BasicFiscalRegister::getUpgradeManager() const
{
    return {};
}

bool BasicFiscalRegister::isSpeedEnumerate() const
{
    return m_settings->isSpeedEnumerate();
}

void BasicFiscalRegister::setSpeedEnumerate(bool enumerate)
{
    m_settings->setSpeedEnumerate(enumerate);
}

void BasicFiscalRegister::setDeviceId(unsigned int deviceId)
{
    m_settings->setDeviceId(deviceId);
}

int BasicFiscalRegister::getHardwareClass() const
{
    return 64;
}

void BasicFiscalRegister::setDriverOptions(const hw::fr::DriverOptions& options)
{
    m_settings->mergeOptions(options);
}

void BasicFiscalRegister::addUnusedProperties(const QList<QString>& names)
{
    m_unusedProperties.append(names);
    setProperty("unusedProps", QVariant(m_unusedProperties));
}

} // namespace hw
