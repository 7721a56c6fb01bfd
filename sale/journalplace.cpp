#include "journalplace.h"

#include "journalfault.h"
#include "placeonfile.h"

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
void requireUse(const QString& name, int how, const QString& file)
{
    if (::faccessat(AT_FDCWD, QFile::encodeName(name).constData(), how, AT_EACCESS) != 0)
        throw journalFault(file, errno);
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
    if (!lookAt(folder))
        return stateFolder() + QStringLiteral("/frspf") + fileOfSales;
    const QString file = folder + fileOfSales;
    requireUse(folder, W_OK | X_OK, file);
    if (QFile::exists(file))
        requireUse(file, R_OK | W_OK, file);
    return file;
}

void requireJournalPlace(const QString& fileName)
{
    QString folder = QFileInfo(fileName).absolutePath();
    while (!lookAt(folder))
        folder = QFileInfo(folder).absolutePath();
    // What is no folder has nothing in it.
    requireUse(folder + QStringLiteral("/."), W_OK | X_OK, fileName);
}

QString formerJournalPlace()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/frctl/sales.sqlite");
}

} // namespace sale
