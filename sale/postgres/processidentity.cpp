#include "postgres/processidentity.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace sale {

namespace {

/// Of the machine itself, and not of a container, which may have its id from an image that others have, too.
const QString firstSpace = QStringLiteral("pid:[4026531836]");

/// What stands behind the name in /proc/PID/stat: the name itself may have blanks and brackets.
QList<QByteArray> statusOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.readAll();
    return text.mid(text.lastIndexOf(')') + 1).simplified().split(' ');
}

qint64 startOf(qint64 process)
{
    constexpr int place = 19;
    return statusOf(process).value(place).toLongLong();
}

QString textOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll().trimmed()) : QString();
}

QString bootId()
{
    return textOf(QStringLiteral("/proc/sys/kernel/random/boot_id"));
}

QString ownSpace()
{
    return bootId() + QLatin1Char('/')
        + QFile::symLinkTarget(QStringLiteral("/proc/self/ns/pid")).section(QLatin1Char('/'), -1);
}

/// Qt looks into D-Bus's file alone, which is not there everywhere, and keeps its id when the machine gets
/// another one.
QString ownMachine()
{
    const QString id = textOf(QStringLiteral("/etc/machine-id"));
    return id.isEmpty() ? QStringLiteral("host ") + QSysInfo::machineHostName() : id;
}

/// The library's own functions for that have no C linkage here.
int openProcess(qint64 process)
{
    return static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(process), 0));
}

/// A process that its number cannot be taken from while this is there.
class Handle
{
public:
    explicit Handle(const ProcessIdentity& identity)
        : m_descriptor(openProcess(identity.process))
        , m_isGone(m_descriptor < 0 && errno == ESRCH)
    {
        // It is known only now which process has the number.
        const qint64 started = m_descriptor < 0 ? 0 : startOf(identity.process);
        m_isGone = m_isGone || (started != 0 && identity.started != 0 && started != identity.started);
    }
    ~Handle()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    /// All its threads, and its files are closed.
    bool hasEnded(int milliseconds) const
    {
        pollfd entry{m_descriptor, POLLIN, 0};
        return m_isGone || (m_descriptor >= 0 && ::poll(&entry, 1, milliseconds) > 0);
    }
    bool kill() const
    {
        if (m_isGone || m_descriptor < 0)
            return m_isGone;
        return ::syscall(SYS_pidfd_send_signal, m_descriptor, SIGKILL, nullptr, 0) == 0 || errno == ESRCH;
    }

private:
    int m_descriptor;
    bool m_isGone;
};

} // namespace

ProcessIdentity ProcessIdentity::ofProcess(qint64 process)
{
    static const QString machine = ownMachine();
    static const QString space = ownSpace();
    return {machine, space, process, startOf(process)};
}

ProcessIdentity ProcessIdentity::own()
{
    return ofProcess(::getpid());
}

ProcessIdentity::Fate ProcessIdentity::fate() const
{
    const ProcessIdentity here = own();
    if (machine != here.machine)
        return Fate::Unseen;
    if (space == here.space)
        return Handle(*this).hasEnded(0) ? Fate::Ended : Fate::Alive;
    const auto isOfFirstSpace = [](const QString& one) { return one.endsWith(firstSpace); };
    const auto bootOf = [](const QString& one) { return one.section(QLatin1Char('/'), 0, 0); };
    // Nothing outlives a boot.
    const bool isOfFormerBoot
        = isOfFirstSpace(space) && isOfFirstSpace(here.space) && bootOf(space) != bootOf(here.space);
    return isOfFormerBoot ? Fate::Ended : Fate::Unseen;
}

bool ProcessIdentity::isFrozen() const
{
    const QByteArray state = statusOf(process).value(0);
    return state == "T" || state == "t";
}

bool ProcessIdentity::waitForEnd(int milliseconds) const
{
    return Handle(*this).hasEnded(milliseconds);
}

bool ProcessIdentity::kill() const
{
    return Handle(*this).kill();
}

} // namespace sale
