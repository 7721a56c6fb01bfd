#include "journalfault.h"

#include "saletr.h"

#include <QFileInfo>
#include <QSqlError>

#include <grp.h>
#include <sys/stat.h>

#include <cerrno>

namespace sale {

namespace {

/// The codes of SQLite, without what it adds in the upper bits.
enum Fault {
    Busy = 5,
    Locked = 6,
    ReadOnly = 8,
    Input = 10,
    Corrupt = 11,
    Full = 13,
    CannotOpen = 14,
    NoDatabase = 26
};

/// Empty where nobody gets at the file by being of its folder's group.
QString groupOf(const QString& fileName)
{
    struct stat status = {};
    const QByteArray folder = QFileInfo(fileName).absolutePath().toLocal8Bit();
    // Nobody is to be of the superuser's group for it.
    if (::stat(folder.constData(), &status) != 0 || (status.st_mode & (S_IWGRP | S_IWOTH)) != S_IWGRP
        || status.st_gid == 0)
        return {};
    const struct group* const entry = ::getgrgid(status.st_gid);
    return entry == nullptr ? QString::number(status.st_gid) : QString::fromLocal8Bit(entry->gr_name);
}

QString accessAdvice(const QString& fileName)
{
    const QString group = groupOf(fileName);
    return group.isEmpty() ? tr("it must be a file that this user can write")
                           : tr("whoever sells must be able to write the file and its folder: be "
                                "of the group %1 (usermod -aG %1 USER, then log in anew)")
                                 .arg(group);
}

QString advice(const QString& fileName, int code)
{
    switch (code) {
    case Busy:
    case Locked:
        return tr("another program has it locked; try again, and end that program if it hangs");
    case Full:
        return tr("the disk is full; nothing is sold until there is room");
    case Corrupt:
    case NoDatabase:
        return tr("it is damaged; put a backup in its place, or move it away and look through the "
                  "register's tape before frctl journal accept");
    case Input:
        return tr("the disk fails or has no room");
    case ReadOnly:
    case CannotOpen:
        return accessAdvice(fileName);
    default:
        return {};
    }
}

JournalError faultOf(const QString& fileName, const QString& what, const QString& toDo)
{
    return JournalError(tr("journal %1: %2").arg(fileName, what), toDo);
}

} // namespace

JournalError journalFault(const QString& fileName, const QSqlError& error)
{
    constexpr int plainCode = 0xFF;
    const int code = error.nativeErrorCode().toInt() & plainCode;
    const QString what = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    return faultOf(fileName, what, advice(fileName, code));
}

JournalError journalFault(const QString& fileName, int error)
{
    const bool isDiskFault = error == EIO || error == EROFS;
    const int code = error == ENOSPC || error == EDQUOT ? Full : isDiskFault ? Input : CannotOpen;
    return faultOf(fileName, qt_error_string(error),
        error == EEXIST ? tr("name one that is not there") : advice(fileName, code));
}

JournalError damagedJournal(const QString& fileName, const QString& what)
{
    return faultOf(fileName, what, advice(fileName, Corrupt));
}

} // namespace sale
