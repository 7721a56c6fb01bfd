#include "program/runfile.h"

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace frserver {

namespace {

QByteArray fileOf(const QString& journal)
{
    return QFile::encodeName(journal + QStringLiteral(".run"));
}

/// The whole file.
struct flock lockOf(short kind)
{
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    return lock;
}

/// 0 for nobody.
pid_t holderOf(int file)
{
    struct flock lock = lockOf(F_WRLCK);
    const bool isAsked = ::fcntl(file, F_GETLK, &lock) == 0;
    return isAsked && lock.l_type != F_UNLCK ? lock.l_pid : 0;
}

[[noreturn]] void refuse(const QByteArray& file, const QString& reason)
{
    throw std::runtime_error((QFile::decodeName(file) + QStringLiteral(": ") + reason).toStdString());
}

[[noreturn]] void refuseServed(const QString& journal, qint64 process)
{
    refuse(fileOf(journal), QStringLiteral("process %1 serves from this journal").arg(process));
}

} // namespace

void requireNobodyServes(const QString& journal)
{
    const RunFile::Running running = RunFile::read(journal);
    if (running.process != 0)
        refuseServed(journal, running.process);
}

RunFile::RunFile(const QString& journal)
    : m_file(::open(fileOf(journal).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0660))
{
    if (m_file < 0) {
        // Where it cannot write it cannot sell either; it serves nevertheless, and says so to its clients.
        qWarning("frserver: %s: %s; frserver upgrade will not find this service", fileOf(journal).constData(),
            qPrintable(qt_error_string(errno)));
        return;
    }
    struct flock lock = lockOf(F_WRLCK);
    if (::fcntl(m_file, F_SETLK, &lock) == 0) {
        write();
        return;
    }
    const pid_t holder = holderOf(m_file);
    ::close(m_file);
    refuseServed(journal, holder);
}

RunFile::~RunFile()
{
    if (m_file >= 0)
        ::close(m_file);
}

void RunFile::tellReady(const QString& version)
{
    m_running.version = version;
    m_running.start = QDateTime::currentMSecsSinceEpoch();
    write();
}

void RunFile::tellKeptPlace(const QString& reason)
{
    ++m_running.keptPlace;
    m_running.reason = reason;
    write();
}

void RunFile::tell(Phase phase)
{
    m_running.phase = phase;
    write();
}

void RunFile::write() const
{
    if (m_file < 0)
        return;
    const QByteArray text = QJsonDocument(QJsonObject{{QStringLiteral("version"), m_running.version},
                                              {QStringLiteral("start"), m_running.start},
                                              {QStringLiteral("keptPlace"), m_running.keptPlace},
                                              {QStringLiteral("reason"), m_running.reason},
                                              {QStringLiteral("phase"), static_cast<int>(m_running.phase)}})
                                .toJson(QJsonDocument::Compact)
        + '\n';
    // In its place, since the lock is that of this file. Who reads half of it reads it again.
    const ssize_t written = ::pwrite(m_file, text.constData(), static_cast<size_t>(text.size()), 0);
    if (written == static_cast<ssize_t>(text.size()))
        static_cast<void>(::ftruncate(m_file, written));
}

RunFile::Running RunFile::read(const QString& journal)
{
    const int descriptor = ::open(fileOf(journal).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 && errno == ENOENT)
        return {};
    if (descriptor < 0)
        refuse(fileOf(journal), qt_error_string(errno));
    Running running{.process = holderOf(descriptor)};
    QFile file;
    file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    const QJsonObject json = QJsonDocument::fromJson(file.readLine()).object();
    running.version = json.value(QStringLiteral("version")).toString();
    running.start = json.value(QStringLiteral("start")).toInteger();
    running.keptPlace = json.value(QStringLiteral("keptPlace")).toInt();
    running.reason = json.value(QStringLiteral("reason")).toString();
    running.phase = static_cast<Phase>(json.value(QStringLiteral("phase")).toInt());
    return running;
}

} // namespace frserver
