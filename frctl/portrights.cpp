#include "portrights.h"

#include "frctltr.h"
#include "ptynumber.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace frctl {

namespace {

/// Being of the group of the superuser would open far more than the port.
bool doesGroupHelp(const PortRights& rights)
{
    constexpr mode_t forGroup = S_IRGRP | S_IWGRP;
    return (rights.mode & forGroup) == forGroup && !rights.group.isEmpty()
        && rights.group != QStringLiteral("root");
}

} // namespace

PortRights rightsOf(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    const QFileInfo file(path);
    return {file.owner(), file.group(), status.st_mode, devices::isPty(status.st_rdev)};
}

QString portAdvice(const QString& path, const PortRights& rights)
{
    if (rights.isPty)
        return tr("%1 is the pty of a program of %2: run frctl as that user").arg(path, rights.owner);
    if (doesGroupHelp(rights))
        return tr("sudo usermod -aG %1 \"$USER\", then log in anew").arg(rights.group);
    return tr("give %1 to a group by a udev rule (KERNEL==\"%2\", GROUP=\"dialout\", MODE=\"0660\") in "
              "/etc/udev/rules.d, and be of that group")
        .arg(path, QFileInfo(path).fileName());
}

} // namespace frctl
