#include "driverbuilding.h"

#include "abstractfiscalregister.h"
#include "connectionerror.h"
#include "devicestr.h"

#include <QVariant>

namespace devices {

namespace {

void setProperty(QObject& deviceObject, const char* name, const QVariant& value)
{
    if (!deviceObject.setProperty(name, value))
        throw ConnectionError(ConnectionError::NoPlugin,
            tr("the plugin does not take its property %1").arg(QLatin1String(name)));
}

} // namespace

AbstractFrDriver& buildDriver(QObject& deviceObject, QObject& line, const ConnectionSettings& settings)
{
    setProperty(deviceObject, "serialObj", QVariant::fromValue<QObject*>(&line));
    setProperty(deviceObject, "protocol", settings.protocol);
    setProperty(deviceObject, "deviceId", settings.deviceId);
    setProperty(deviceObject, "speedEnumerate", settings.speedEnumerate);
    setProperty(deviceObject, "driverOptions", QVariant::fromValue(settings.driverOptions));
    if (!settings.protocolVersion.isEmpty())
        setProperty(deviceObject, "protocolVer", settings.protocolVersion);
    QMetaObject::invokeMethod(&deviceObject, "init");
    auto* const fiscalRegister = qobject_cast<hw::AbstractFiscalRegister*>(&deviceObject);
    AbstractFrDriver* const driver = fiscalRegister != nullptr ? fiscalRegister->getLegacyDriver() : nullptr;
    if (driver == nullptr)
        throw ConnectionError(ConnectionError::NoPlugin, tr("the plugin gives no driver"));
    return *driver;
}

} // namespace devices
