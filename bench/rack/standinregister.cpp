#include "standinregister.h"

#include "standindriver.h"

#include "abstractserialdevice.h"

StandInRegister::StandInRegister() = default;

StandInRegister::~StandInRegister() = default;

AbstractFrDriver* StandInRegister::getLegacyDriver()
{
    return m_driver.get();
}

void StandInRegister::init()
{
    if (const auto* const line = dynamic_cast<hw::AbstractSerialDevice*>(m_line.value<QObject*>()))
        m_driver = std::make_unique<StandInDriver>(line->getDeviceName());
}
