#include "portlock.h"

#include "portname.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFileInfo>
#include <QHostInfo>
#include <QSet>
#include <QStringList>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace devices {

namespace {

constexpr mode_t forAllUsers = 0666;

/// The same for every user, so not the first one that happens to be writable.
QByteArray lockFolder()
{
    const QByteArray usual = QByteArrayLiteral("/run/lock");
    struct stat status = {};
    const bool isForAll = ::stat(usual.constData(), &status) == 0 && (status.st_mode & S_IWOTH) != 0;
    return isForAll ? usual : QByteArrayLiteral("/tmp");
}

/// Files are never removed: another program may be waiting for one.
QByteArray lockFile(const QString& target)
{
    const QByteArray digest = QCryptographicHash::hash(target.toUtf8(), QCryptographicHash::Sha256);
    return lockFolder() + "/frport-" + digest.left(16).toHex();
}

int openLockFile(const QByteArray& name)
{
    constexpr int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    // In a folder for all, the system lets nobody open the file of another user with O_CREAT.
    int file = ::open(name.constData(), O_RDWR | flags);
    if (file < 0 && errno == EACCES)
        file = ::open(name.constData(), O_RDONLY | flags);
    if (file >= 0 || errno != ENOENT)
        return file;
    file = ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | flags, forAllUsers);
    if (file >= 0)
        ::fchmod(file, forAllUsers);
    return file < 0 && errno == EEXIST ? openLockFile(name) : file;
}

void writeHolder(int file)
{
    const QByteArray text = QByteArray::number(static_cast<qint64>(::getpid())) + '\n';
    // Who holds the port is a word for the person who waits; the lock itself does without it.
    if (::ftruncate(file, 0) != 0
        || ::pwrite(file, text.constData(), static_cast<size_t>(text.size()), 0) < 0)
        return;
}

qint64 readHolder(int file)
{
    QByteArray text(32, '\0');
    const ssize_t size = ::pread(file, text.data(), static_cast<size_t>(text.size()), 0);
    return text.left(std::max<ssize_t>(0, size)).trimmed().toLongLong();
}

QStringList addressesOf(const TcpAddress& tcp)
{
    QSet<QString> targets;
    for (QHostAddress address : QHostInfo::fromName(tcp.host).addresses()) {
        bool isIp4 = false;
        // An IPv6 address may stand for an IPv4 one.
        if (const quint32 ip4 = address.toIPv4Address(&isIp4); isIp4)
            address = QHostAddress(ip4);
        targets.insert(QStringLiteral("tcp:%1:%2").arg(address.toString()).arg(tcp.port));
    }
    return targets.values();
}

QStringList targetsOf(const QString& port)
{
    if (isTcpName(port)) {
        const std::optional<TcpAddress> address = tcpAddressOf(port);
        return address ? addressesOf(*address) : QStringList();
    }
    const QString path = QFileInfo(devicePath(port)).canonicalFilePath();
    return path.isEmpty() ? QStringList() : QStringList(path);
}

} // namespace

bool PortLock::take(const QString& port)
{
    release();
    const QStringList targets = targetsOf(port);
    const bool hasAll
        = std::all_of(targets.cbegin(), targets.cend(), [this](const QString& one) { return takeOne(one); });
    if (!hasAll) {
        for (const int file : m_files)
            ::close(file);
        m_files.clear();
    }
    return hasAll;
}

bool PortLock::takeOne(const QString& target)
{
    const int file = openLockFile(lockFile(target));
    if (file < 0) {
        m_error = qt_error_string(errno);
        return false;
    }
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
        writeHolder(file);
        m_files.push_back(file);
        return true;
    }
    m_holder = readHolder(file);
    ::close(file);
    return false;
}

void PortLock::release()
{
    for (const int file : m_files)
        ::close(file);
    m_files.clear();
    m_holder = 0;
    m_error.clear();
}

} // namespace devices
