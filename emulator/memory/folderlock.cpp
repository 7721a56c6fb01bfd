#include "memory/folderlock.h"

#include "memory/memoryerror.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace emulator {

namespace {

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// The process that has the lock has written its number into it.
QString owner(int file)
{
    char digits[32] = {};
    const ssize_t count = ::pread(file, digits, sizeof digits, 0);
    return count > 0 ? QString::fromLatin1(digits, count).trimmed() : QStringLiteral("unknown");
}

} // namespace

FolderLock::FolderLock(const QString& folder)
{
    if (!QDir().mkpath(folder))
        throw MemoryError(QStringLiteral("the folder cannot be made"));
    const QByteArray name = QFile::encodeName(QDir(folder).filePath(QStringLiteral("lock")));
    m_file = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (m_file < 0)
        throw MemoryError(systemError());
    if (::flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        const QString pid = owner(m_file);
        ::close(m_file);
        throw MemoryError(QStringLiteral("in use by process %1").arg(pid));
    }
    const QByteArray pid = QByteArray::number(static_cast<qint64>(::getpid())) + '\n';
    // For the message above alone; the lock holds without it.
    if (::ftruncate(m_file, 0) == 0)
        static_cast<void>(
            ::pwrite(m_file, pid.constData(), static_cast<size_t>(pid.size()), 0) == pid.size());
}

FolderLock::~FolderLock()
{
    ::close(m_file);
}

} // namespace emulator
