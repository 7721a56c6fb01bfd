#include "portlisting.h"

#include "portname.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>

namespace devices {

namespace {

QString hexadecimal(bool isKnown, quint16 number)
{
    return isKnown ? QStringLiteral("%1").arg(number, 4, 16, QLatin1Char('0')) : QString();
}

/// The folder's link to the port; empty without one.
QString linkTo(const QString& target, const QString& folder)
{
    // A link whose adapter is gone is none.
    for (const QFileInfo& link : QDir(folder).entryInfoList(QDir::System | QDir::Files, QDir::Name)) {
        if (link.canonicalFilePath() == target)
            return link.filePath();
    }
    return {};
}

PortInfo entryOf(const QSerialPortInfo& port)
{
    return {.path = port.systemLocation(),
        .manufacturer = port.manufacturer(),
        .description = port.description(),
        .serialNumber = port.serialNumber(),
        .vendorId = hexadecimal(port.hasVendorIdentifier(), port.vendorIdentifier()),
        .productId = hexadecimal(port.hasProductIdentifier(), port.productIdentifier())};
}

PortInfo withLinks(PortInfo info, const QString& linkFolder)
{
    const QString target = QFileInfo(info.path).canonicalFilePath();
    if (target.isEmpty())
        return info;
    info.byId = linkTo(target, linkFolder + QStringLiteral("/by-id"));
    info.byPath = linkTo(target, linkFolder + QStringLiteral("/by-path"));
    return info;
}

bool isSameMake(const PortInfo& one, const PortInfo& other)
{
    return one.vendorId == other.vendorId && one.productId == other.productId
        && one.serialNumber == other.serialNumber;
}

} // namespace

QList<PortInfo> withoutSharedLinks(const QList<PortInfo>& ports)
{
    QList<PortInfo> result = ports;
    for (PortInfo& port : result) {
        const bool isShared = std::any_of(ports.cbegin(), ports.cend(),
            [&port](const PortInfo& other) { return other.byId.isEmpty() && isSameMake(port, other); });
        if (isShared)
            port.byId.clear();
    }
    return result;
}

QList<PortInfo> listPorts(const QString& linkFolder)
{
    QList<PortInfo> ports;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts())
        ports.append(withLinks(entryOf(port), linkFolder));
    std::sort(ports.begin(), ports.end(),
        [](const PortInfo& left, const PortInfo& right) { return left.path < right.path; });
    return withoutSharedLinks(ports);
}

PortInfo portInfo(const QString& name, const QString& linkFolder)
{
    if (isTcpName(name))
        return {.path = name};
    const QString target = QFileInfo(devicePath(name)).canonicalFilePath();
    for (const PortInfo& port : listPorts(linkFolder)) {
        if (!target.isEmpty() && port.path == target)
            return port;
    }
    return withLinks({.path = devicePath(name)}, linkFolder);
}

} // namespace devices
