#pragma once

#include <QString>

namespace devices {

/// What the system knows of a serial port without opening it. What it does not know is empty.
struct PortInfo
{
    /// "/dev/ttyUSB0", or the name that was asked about.
    QString path = {};
    QString manufacturer = {};
    QString description = {};
    /// Of the adapter, not of the register behind it.
    QString serialNumber = {};
    /// Hexadecimal digits.
    QString vendorId = {};
    QString productId = {};
    /// Its link of /dev/serial/by-id; empty also where another adapter has the same one. One without a serial
    /// number shares it with whatever of its kind is plugged in later.
    QString byId = {};
    /// The one that tells the socket.
    QString byPath = {};

    /// The name that another order of the sockets or of the start does not give to another adapter, the path
    /// where there is none.
    QString stableName() const
    {
        if (!byId.isEmpty() && (!serialNumber.isEmpty() || byPath.isEmpty()))
            return byId;
        return byPath.isEmpty() ? path : byPath;
    }
};

} // namespace devices
