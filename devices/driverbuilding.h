#pragma once

#include "connectionsettings.h"

#include <QObject>

class AbstractFrDriver;

namespace devices {

/// Has the plugin's device object (createDeviceObject) build the driver that works over the line, any object
/// that implements hw::AbstractSerialDevice, as the settings want it; their port is not looked at. The driver
/// is the device object's; the line must outlive both. Throws ConnectionError.
AbstractFrDriver& buildDriver(QObject& deviceObject, QObject& line, const ConnectionSettings& settings);

} // namespace devices
