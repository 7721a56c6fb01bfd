#pragma once

#include "portinfo.h"

#include <QList>

namespace devices {

/// The serial ports of this machine, in the order of their names. Nothing is opened. The folder is where udev
/// has the links to them.
QList<PortInfo> listPorts(const QString& linkFolder = QStringLiteral("/dev/serial"));
/// The ports without by-id links that lead to one of several adapters: makers give the same serial number to
/// all of a kind, and the link goes to whichever was plugged in last. Lines of one adapter have a link each.
QList<PortInfo> withoutSharedLinks(const QList<PortInfo>& ports);
/// What is known of a port by its name, as for createSerialDevice; of a pty and of TCP the name alone.
PortInfo portInfo(const QString& name, const QString& linkFolder = QStringLiteral("/dev/serial"));

} // namespace devices
