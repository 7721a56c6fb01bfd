#include "journalplace.h"

#include "journalfault.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace sale {

namespace {

const QString fileOfSales = QStringLiteral("/sales.sqlite");

/// Also of a program that runs for another user than it was started by.
bool canUse(const QString& name, int how)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(name).constData(), how, AT_EACCESS) == 0;
}

/// Qt knows the folder for state from a later release on.
QString stateFolder()
{
    const QString set = qEnvironmentVariable("XDG_STATE_HOME");
    return QDir::isAbsolutePath(set) ? set : QDir::homePath() + QStringLiteral("/.local/state");
}

} // namespace

QString machineFolder()
{
    return QStringLiteral("/var/lib/frspf");
}

QString journalPlace(const QString& folder)
{
    const QString set = qEnvironmentVariable("FRSPF_JOURNAL");
    if (!set.isEmpty())
        return set;
    if (!QFileInfo(folder).isDir())
        return stateFolder() + QStringLiteral("/frspf") + fileOfSales;
    const QString file = folder + fileOfSales;
    if (!canUse(folder, W_OK | X_OK) || (QFile::exists(file) && !canUse(file, R_OK | W_OK)))
        throw journalFault(file, EACCES);
    return file;
}

QString formerJournalPlace()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/frctl/sales.sqlite");
}

} // namespace sale
