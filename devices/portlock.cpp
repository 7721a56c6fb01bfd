#include "portlock.h"

#include "portname.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFileInfo>
#include <QHostInfo>
#include <QNetworkInterface>
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

void writeText(int file, const QByteArray& text)
{
    // It is a word for the person who waits and for the next holder; the lock itself does without it.
    if (::ftruncate(file, 0) != 0
        || ::pwrite(file, text.constData(), static_cast<size_t>(text.size()), 0) < 0)
        return;
}

void writeHolder(int file)
{
    writeText(file, QByteArray::number(static_cast<qint64>(::getpid())) + '\n');
}

qint64 readHolder(int file)
{
    QByteArray text(32, '\0');
    const ssize_t size = ::pread(file, text.data(), static_cast<size_t>(text.size()), 0);
    return text.left(std::max<ssize_t>(0, size)).trimmed().toLongLong();
}

/// What a connection to the address ends at. A program that listens on all addresses of this machine is
/// reached by each of them, and by 0.0.0.0.
QHostAddress reached(const QHostAddress& address)
{
    bool isIp4 = false;
    // An IPv6 address may stand for an IPv4 one.
    const quint32 ip4 = address.toIPv4Address(&isIp4);
    const QHostAddress plain = isIp4 ? QHostAddress(ip4) : address;
    const bool isOwn = plain.isLoopback() || plain == QHostAddress(QHostAddress::AnyIPv4)
        || plain == QHostAddress(QHostAddress::AnyIPv6) || QNetworkInterface::allAddresses().contains(plain);
    return isOwn ? QHostAddress(QHostAddress::LocalHost) : plain;
}

QStringList addressesOf(const TcpAddress& tcp)
{
    QStringList targets;
    for (const QHostAddress& address : QHostInfo::fromName(tcp.host).addresses())
        targets.append(QStringLiteral("tcp:%1:%2").arg(reached(address).toString()).arg(tcp.port));
    targets.removeDuplicates();
    // In one order for all, or two programs could each have a part.
    targets.sort();
    return targets;
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
        closeFiles();
        return false;
    }
    for (const int file : m_files) {
        // A name that is left there is one of a program that had no time to take it away.
        m_wasLeftBusy = readHolder(file) != 0 || m_wasLeftBusy;
        writeHolder(file);
    }
    return true;
}

bool PortLock::takeOne(const QString& target)
{
    const QByteArray name = lockFile(target);
    const int file = openLockFile(name);
    if (file < 0) {
        m_error = QString::fromLatin1(name) + QStringLiteral(": ") + qt_error_string(errno);
        return false;
    }
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
        m_files.push_back(file);
        return true;
    }
    m_holder = readHolder(file);
    ::close(file);
    return false;
}

void PortLock::leaveIdle()
{
    for (const int file : m_files)
        writeText(file, {});
}

void PortLock::release()
{
    closeFiles();
    m_wasLeftBusy = false;
    m_holder = 0;
    m_error.clear();
}

void PortLock::closeFiles()
{
    for (const int file : m_files)
        ::close(file);
    m_files.clear();
}

} // namespace devices
