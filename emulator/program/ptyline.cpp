#include "program/ptyline.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <pty.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int retryAfter = 5;
// A host that reads nothing for long has gone; what it did not want is thrown away.
constexpr qsizetype mostWaiting = 1 << 20;

/// True when an emulator holds the line behind the link.
bool isAtWork(const QString& link)
{
    const int line
        = ::open(QFile::encodeName(link).constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    // A host has it for itself.
    if (line < 0)
        return errno == EBUSY;
    const bool isHeld = ::flock(line, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(line);
    return isHeld;
}

} // namespace

PtyLine::PtyLine(const QString& link, QObject* parent)
    : Line(parent)
    , m_link(link)
{
    if (!openPair() || !(m_link.isEmpty() || makeLink()))
        return;
    watchClosings();
    m_notifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] { read(); });
    m_retry = new QTimer(this);
    m_retry->setSingleShot(true);
    m_retry->setInterval(retryAfter);
    connect(m_retry, &QTimer::timeout, this, [this] { flush(); });
}

PtyLine::~PtyLine()
{
    if (m_linked && QFile::symLinkTarget(m_link) == m_slaveName)
        QFile::remove(m_link);
    for (const int file : {m_closings, m_slave, m_master}) {
        if (file >= 0)
            ::close(file);
    }
}

bool PtyLine::openPair()
{
    termios mode{};
    ::cfmakeraw(&mode);
    mode.c_cflag |= CREAD | CLOCAL;
    char name[256] = {};
    // Our own hold on the slave keeps the line up when the host closes its side.
    if (::openpty(&m_master, &m_slave, name, &mode, nullptr) != 0) {
        m_error = QStringLiteral("cannot open a pseudo terminal: %1")
                      .arg(QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    // Tells a second emulator that this line is at work; whoever opens it for a register locks nothing.
    ::flock(m_slave, LOCK_EX | LOCK_NB);
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    m_slaveName = QString::fromLocal8Bit(name);
    return true;
}

void PtyLine::watchClosings()
{
    m_closings = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_closings < 0
        || ::inotify_add_watch(m_closings, QFile::encodeName(m_slaveName).constData(), IN_CLOSE) < 0)
        return;
    auto* const closed = new QSocketNotifier(m_closings, QSocketNotifier::Read, this);
    connect(closed, &QSocketNotifier::activated, this, [this] {
        char events[4096];
        // How many there were is all the same.
        const bool isClosed = ::read(m_closings, events, sizeof events) > 0;
        if (isClosed)
            openToAll();
    });
}

void PtyLine::openToAll()
{
    // A host takes the line for itself, which ends with the last descriptor: ours would keep it that way
    // after a host that was killed.
    ::ioctl(m_slave, TIOCNXCL);
}

bool PtyLine::makeLink()
{
    const QFileInfo old(m_link);
    // A link that an earlier run left behind may go, a real file and the link of a running emulator may not.
    if (!old.isSymLink() && old.exists())
        m_error = QStringLiteral("%1 exists and is no link").arg(m_link);
    // The dead one's line may have become ours.
    else if (old.isSymLink() && QFile::symLinkTarget(m_link) != m_slaveName && isAtWork(m_link))
        m_error = QStringLiteral("%1 is the line of another emulator that is running").arg(m_link);
    if (!m_error.isEmpty())
        return false;
    if (old.isSymLink())
        QFile::remove(m_link);
    m_linked = QFile::link(m_slaveName, m_link);
    if (!m_linked)
        m_error = QStringLiteral("cannot make the link %1").arg(m_link);
    return m_linked;
}

QString PtyLine::address() const
{
    return m_link.isEmpty() ? m_slaveName : m_link;
}

void PtyLine::read()
{
    char buffer[4096];
    const ssize_t count = ::read(m_master, buffer, sizeof buffer);
    // Also where the system does not tell of closings.
    openToAll();
    if (count > 0)
        Q_EMIT received(QByteArray(buffer, count));
}

void PtyLine::write(const QByteArray& bytes)
{
    m_waiting += bytes;
    if (m_waiting.size() > mostWaiting)
        m_waiting.clear();
    flush();
}

void PtyLine::flush()
{
    while (!m_waiting.isEmpty()) {
        const ssize_t count = ::write(m_master, m_waiting.constData(), static_cast<size_t>(m_waiting.size()));
        if (count <= 0) {
            m_retry->start();
            return;
        }
        m_waiting.remove(0, count);
    }
}
