#include "usbport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace frctl {

namespace {

QByteArray contents(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The adapter's own folder in the system; empty for what is none on USB.
QString adapterFolder(const devices::PortInfo& port)
{
    const QString link = QStringLiteral("/sys/class/tty/%1/device").arg(QFileInfo(port.path).fileName());
    QDir folder(QFileInfo(link).canonicalFilePath());
    // The interface's own folder is below that of the device.
    while (folder.path().startsWith(QStringLiteral("/sys/devices/"))) {
        if (folder.exists(QStringLiteral("idVendor")))
            return folder.path();
        if (!folder.cdUp())
            break;
    }
    return {};
}

/// What udev has noted of a character device, by its numbers as "188:0".
bool hasIgnoreMark(const QByteArray& numbers)
{
    const QByteArray known = contents(QStringLiteral("/run/udev/data/c") + QString::fromLatin1(numbers));
    return known.contains("E:ID_MM_DEVICE_IGNORE=1\n") || known.contains("E:ID_MM_PORT_IGNORE=1\n");
}

} // namespace

bool isLeftAloneByModemManager(const devices::PortInfo& port)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(port.path).constData(), &status) != 0)
        return false;
    const QByteArray line
        = QByteArray::number(major(status.st_rdev)) + ':' + QByteArray::number(minor(status.st_rdev));
    // Rules of the system name the whole adapter.
    const QString folder = adapterFolder(port);
    return hasIgnoreMark(line)
        || (!folder.isEmpty() && hasIgnoreMark(contents(folder + QStringLiteral("/dev")).trimmed()));
}

QString powerControlOf(const devices::PortInfo& port)
{
    const QString folder = adapterFolder(port);
    return folder.isEmpty() ? folder : folder + QStringLiteral("/power/control");
}

bool isAutosuspended(const devices::PortInfo& port)
{
    return contents(powerControlOf(port)).trimmed() == "auto";
}

} // namespace frctl
