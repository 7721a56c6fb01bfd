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

} // namespace

bool isLeftAloneByModemManager(const devices::PortInfo& port)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(port.path).constData(), &status) != 0)
        return false;
    const QByteArray known = contents(
        QStringLiteral("/run/udev/data/c%1:%2").arg(major(status.st_rdev)).arg(minor(status.st_rdev)));
    return known.contains("E:ID_MM_DEVICE_IGNORE=1\n") || known.contains("E:ID_MM_PORT_IGNORE=1\n");
}

QString powerControlOf(const devices::PortInfo& port)
{
    const QString link = QStringLiteral("/sys/class/tty/%1/device").arg(QFileInfo(port.path).fileName());
    QDir folder(QFileInfo(link).canonicalFilePath());
    // The interface's own folder is below that of the device.
    while (folder.path().startsWith(QStringLiteral("/sys/devices/"))) {
        if (folder.exists(QStringLiteral("idVendor")))
            return folder.filePath(QStringLiteral("power/control"));
        if (!folder.cdUp())
            break;
    }
    return {};
}

bool isAutosuspended(const devices::PortInfo& port)
{
    return contents(powerControlOf(port)).trimmed() == "auto";
}

} // namespace frctl
