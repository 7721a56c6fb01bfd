#pragma once

#include "portinfo.h"

#include <QList>

namespace devices {

/// The serial ports of this machine, in the order of their names. Nothing is opened. The folder is where udev
/// has the links to them.
QList<PortInfo> listPorts(const QString& linkFolder = QStringLiteral("/dev/serial"));
/// What is known of a port by its name, as for createSerialDevice; of a pty and of TCP the name alone.
PortInfo portInfo(const QString& name, const QString& linkFolder = QStringLiteral("/dev/serial"));

} // namespace devices
