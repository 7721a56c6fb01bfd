#include "portholders.h"

#include "portname.h"
#include "ptynumber.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

namespace devices {

namespace {

QString processFolder(qint64 process)
{
    return QStringLiteral("/proc/%1").arg(process);
}

QByteArray contents(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The number of a character device; nothing for what is none or cannot be seen.
std::optional<dev_t> deviceNumber(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISCHR(status.st_mode))
        return std::nullopt;
    return status.st_rdev;
}

QList<qint64> otherProcesses()
{
    QList<qint64> processes;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool isNumber = false;
        const qint64 process = name.toLongLong(&isNumber);
        if (isNumber && process != ::getpid())
            processes.append(process);
    }
    std::sort(processes.begin(), processes.end());
    return processes;
}

/// Whether the open file is the far end of that pty.
bool isFarEnd(const QString& folder, const QString& file, dev_t opened, dev_t port)
{
    const dev_t farEnds = makedev(5, 2);
    if (opened != farEnds || !isPty(port))
        return false;
    const QByteArray index = "tty-index:\t" + QByteArray::number(minor(port)) + '\n';
    return contents(folder + QStringLiteral("/fdinfo/") + file).contains(index);
}

bool holds(qint64 process, dev_t port)
{
    const QString folder = processFolder(process);
    bool isOpen = false;
    const QDir files(folder + QStringLiteral("/fd"));
    for (const QString& file : files.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        const std::optional<dev_t> opened = deviceNumber(files.filePath(file));
        // Who plays the register may keep both ends open.
        if (opened && isFarEnd(folder, file, *opened, port))
            return false;
        isOpen = isOpen || opened == port;
    }
    return isOpen;
}

template <typename Matches>
QList<PortHolder> programs(const Matches& matches)
{
    QList<PortHolder> found;
    for (const qint64 process : otherProcesses()) {
        if (matches(process))
            found.append({process, programName(process)});
    }
    return found;
}

} // namespace

QList<PortHolder> portHolders(const QString& port)
{
    const std::optional<dev_t> device = isTcpName(port) ? std::nullopt : deviceNumber(devicePath(port));
    if (!device)
        return {};
    return programs([device](qint64 process) { return holds(process, *device); });
}

QString programName(qint64 process)
{
    return QString::fromUtf8(contents(processFolder(process) + QStringLiteral("/comm"))).trimmed();
}

QList<PortHolder> programsNamed(const QString& name)
{
    return programs([&name](qint64 process) { return programName(process) == name; });
}

} // namespace devices
