#include "registerconnection.h"

#include "abstractfrdriver.h"
#include "driverbuilding.h"
#include "driverplugin.h"
#include "heldline.h"
#include "streamdevice.h"

namespace devices {

RegisterConnection::RegisterConnection(const ConnectionSettings& settings)
{
    m_deviceObject = createDeviceObject(findDriverPlugin(settings.plugins));
    m_line = std::make_unique<HeldLine>(settings);
    m_driver = &buildDriver(*m_deviceObject, m_line->device(), settings);
    try {
        m_driver->portOpen();
        m_line->dropLeftovers();
    } catch (...) {
        closePort();
        throw;
    }
}

RegisterConnection::~RegisterConnection()
{
    closePort();
}

quint64 RegisterConnection::soleConnection() const
{
    return m_line->device().soleConnection();
}

quint64 RegisterConnection::repeats() const
{
    return m_line->device().repeats();
}

std::optional<LineErrors> RegisterConnection::lineErrors() const
{
    return m_line->device().lineErrors();
}

bool RegisterConnection::isBudgetSpent() const
{
    return m_line->device().isBudgetSpent();
}

bool RegisterConnection::hasInput(int milliseconds)
{
    return m_line->device().waitForReadyRead(milliseconds);
}

void RegisterConnection::leaveIdle()
{
    m_line->leaveIdle();
}

void RegisterConnection::closePort()
{
    m_line->endWaits();
    m_driver->portClose();
}

} // namespace devices
