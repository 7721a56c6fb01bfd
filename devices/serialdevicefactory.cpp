#include "serialdevicefactory.h"

#include "portname.h"
#include "serialportdevice.h"
#include "tcpserialdevice.h"

namespace devices {

std::unique_ptr<StreamDevice> createSerialDevice(const QString& name)
{
    if (isTcpName(name)) {
        const std::optional<TcpAddress> address = tcpAddressOf(name);
        return address ? std::make_unique<TcpSerialDevice>(address->host, address->port) : nullptr;
    }
    if (name.trimmed().isEmpty())
        return nullptr;
    return std::make_unique<SerialPortDevice>(name);
}

} // namespace devices
