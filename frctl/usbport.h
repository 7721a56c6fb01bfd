#pragma once

#include "portinfo.h"

namespace frctl {

inline bool isUsb(const devices::PortInfo& port)
{
    return !port.vendorId.isEmpty();
}

/// Whether udev was told that ModemManager leaves the port, or its adapter, alone.
bool isLeftAloneByModemManager(const devices::PortInfo& port);
/// The file that decides whether the system powers the adapter down; empty where there is none.
QString powerControlOf(const devices::PortInfo& port);
/// Whether it may be powered down while nothing is sent.
bool isAutosuspended(const devices::PortInfo& port);

} // namespace frctl
