#include "basicfrdriver.h"

#include "basicfrsettings.h"
#include "driverlogger.h"

#include <algorithm>
#include <memory>

#include <unistd.h>

namespace {

/// A host may go on holding the settings of a driver that it has deleted, so settings made here outlive their
/// driver: they stay until the library is unloaded.
BasicFrSettings* makeSettings()
{
    static std::vector<std::unique_ptr<BasicFrSettings>> made;
    return made.emplace_back(std::make_unique<BasicFrSettings>()).get();
}

} // namespace

BasicFrDriver::BasicFrDriver()
    : BasicFrDriver(nullptr, QString(), nullptr)
{
}

BasicFrDriver::BasicFrDriver(
    AbstractSerialDriver* serialDriver, const QString& name, BasicFrSettings* driverSettings)
    : serial(serialDriver)
    , settings(driverSettings != nullptr ? driverSettings : makeSettings())
    , logger(driverLogger(name))
    , deviceInfo(QString(), QString())
{
    deviceInfo.setLoggerName(name);
    BasicFrDriver::setOption(hw::fr::OptionBit2, true);
    BasicFrDriver::setOption(hw::fr::OptionBit19, true);
    BasicFrDriver::setOption(hw::fr::OptionBit24, true);
}

BasicFrDriver::~BasicFrDriver() = default;

DeviceInfo BasicFrDriver::getDeviceInfo()
{
    return deviceInfo;
}

BasicFrSettings* BasicFrDriver::getDeviceSettings() const
{
    return settings;
}

bool BasicFrDriver::checkOption(hw::fr::Option option) const
{
    return (optionMask & option) == option;
}

void BasicFrDriver::setOption(hw::fr::Option option, bool enable)
{
    const bool on = settings->getOptions().value(option, enable);
    optionMask = on ? optionMask | option : optionMask & ~static_cast<quint64>(option);
}

bool BasicFrDriver::useFN()
{
    return checkOption(hw::fr::OptionUseFn);
}

void BasicFrDriver::setNumber(int registerNumber)
{
    number = registerNumber;
}

int BasicFrDriver::getNumber() const
{
    return number;
}

bool BasicFrDriver::setParams(const QList<FrParameter>& parameters)
{
    return std::all_of(parameters.begin(), parameters.end(), [this](const FrParameter& parameter) {
        return legacySetParam(
            parameter.getTableNum(), parameter.getRowNum(), parameter.getFieldNum(), parameter.getValue());
    });
}

bool BasicFrDriver::legacySetParam(unsigned short, unsigned short, unsigned short, const QString&)
{
    return false;
}

void BasicFrDriver::setErrorNotificationHandler(
    const std::function<void(const tr::Tr&, const QString&)>& handler)
{
    errorNotificationHandler = handler;
}

void BasicFrDriver::setOfdNotificationHandler(
    const std::function<void(bool, const tr::Tr&, const QDateTime&)>& handler)
{
    ofdNotificationHandler = handler;
}

void BasicFrDriver::msleep(int milliseconds) const
{
    usleep(static_cast<useconds_t>(milliseconds) * 1000);
}
