#include "accessadvice.h"

#include "saletr.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <optional>

namespace sale {

namespace {

using Status = struct stat;

std::optional<Status> statusOf(const QString& name)
{
    Status status = {};
    const bool isThere = ::stat(QFile::encodeName(name).constData(), &status) == 0;
    return isThere ? std::optional(status) : std::nullopt;
}

bool isReadOnlyDisk(const QString& folder)
{
    struct statvfs disk = {};
    return ::statvfs(QFile::encodeName(folder).constData(), &disk) == 0 && (disk.f_flag & ST_RDONLY) != 0;
}

bool mayUse(const QString& name, int how)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(name).constData(), how, AT_EACCESS) == 0;
}

QString nameOfGroup(gid_t number)
{
    const struct group* const entry = ::getgrgid(number);
    return entry == nullptr ? QString::number(number) : QString::fromLocal8Bit(entry->gr_name);
}

bool isInGroup(gid_t number)
{
    constexpr int most = 1024;
    std::array<gid_t, most> groups;
    const auto* const end = groups.data() + std::max(0, ::getgroups(most, groups.data()));
    return ::getegid() == number || std::find(groups.cbegin(), end, number) != end;
}

/// Whoever is of the group gets at a folder that is not for everybody; nobody is made one of root's.
bool isForGroup(const Status& folder)
{
    return (folder.st_mode & (S_IWGRP | S_IWOTH)) == S_IWGRP && folder.st_gid != 0;
}

} // namespace

QString accessAdvice(const QString& fileName)
{
    const QString folder = QFileInfo(fileName).absolutePath();
    const std::optional<Status> status = statusOf(folder);
    if (status && !S_ISDIR(status->st_mode))
        return tr("%1 is no folder; move it away").arg(folder);
    if (status && isReadOnlyDisk(folder))
        return tr("it is on a file system that is mounted read-only");
    if (status && isForGroup(*status) && !isInGroup(status->st_gid) && !mayUse(folder, W_OK | X_OK))
        return tr("whoever sells must be able to write the file and its folder: be of the group %1 (usermod "
                  "-aG %1 USER, then log in anew)")
            .arg(nameOfGroup(status->st_gid));
    const std::optional<Status> file = statusOf(fileName);
    const bool isUsable = file && S_ISREG(file->st_mode) && mayUse(fileName, R_OK | W_OK);
    if (file && S_ISREG(file->st_mode) && !isUsable && status && isForGroup(*status)
        && isInGroup(status->st_gid))
        return tr("the file is not for its group; its owner or root has to do: chgrp %1 %2; chmod 660 %2")
            .arg(nameOfGroup(status->st_gid), fileName);
    if (isUsable && !mayUse(folder, W_OK | X_OK))
        return tr("this user must be able to write its folder, too: there are files beside it while it is "
                  "in use");
    return tr("it must be a file that this user can write, in a folder that this user can write");
}

} // namespace sale
