#include "memory/statefolder.h"

#include "memory/foreignstate.h"
#include "memory/registerstate.h"
#include "memory/statestore.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace emulator {

namespace {

const QString ending = QStringLiteral(".sqlite");

void removeLogs(const QString& file)
{
    for (const char* const log : {"-wal", "-shm", "-journal"})
        QFile::remove(file + QLatin1String(log));
}

/// A name beside the file that is free for what is to take its place.
QString freshBeside(const QString& file)
{
    const QString fresh = file + QStringLiteral(".new");
    QFile::remove(fresh);
    removeLogs(fresh);
    return fresh;
}

bool flush(const QString& name)
{
    const int file = ::open(QFile::encodeName(name).constData(), O_RDONLY | O_CLOEXEC);
    const bool isFlushed = file >= 0 && ::fsync(file) == 0;
    if (file >= 0)
        ::close(file);
    return isFlushed;
}

// All of the new file is on the disk before it takes the place of the old one.
void replace(const QString& file, const QString& fresh)
{
    const QByteArray from = QFile::encodeName(fresh);
    if (!flush(fresh) || std::rename(from.constData(), QFile::encodeName(file).constData()) != 0
        || !flush(QFileInfo(file).path()))
        throw MemoryError(QStringLiteral("%1 cannot be written: %2")
                              .arg(file, QString::fromLocal8Bit(std::strerror(errno))));
}

// Everything in it is read once.
void checkState(const QString& file)
{
    const StateStore store(file);
    store.parts();
    store.documents();
}

// The fiscal drive may be another one: it was taken out and put in again.
void checkIdentity(const QString& file, const Identity& wanted)
{
    const registerstate::States states = StateStore(file).parts();
    // A state that was made and nothing more is of none.
    if (states.isEmpty())
        return;
    const Identity kept = registerstate::readIdentity(states);
    if (kept.serialNumber != wanted.serialNumber || kept.model != wanted.model)
        throw ForeignState(QStringLiteral("it is of the register %1, model %2, and this one is %3, model %4")
                               .arg(kept.serialNumber.trimmed())
                               .arg(kept.model)
                               .arg(wanted.serialNumber.trimmed())
                               .arg(wanted.model));
}

} // namespace

StateFolder::StateFolder(const QString& folder)
    : m_folder(folder)
    , m_lock(folder)
{
}

QString StateFolder::stateFileOf(const QString& folder)
{
    return QDir(folder).filePath(QStringLiteral("register") + ending);
}

QString StateFolder::madeStateFile() const
{
    const QString file = stateFile();
    // The log of one that is gone is for the store to complain about.
    if (QFile::exists(file) || QFile::exists(file + QStringLiteral("-wal")))
        return file;
    const QString fresh = freshBeside(file);
    {
        const StateStore made(fresh);
    }
    replace(file, fresh);
    return file;
}

bool StateFolder::isSnapshotName(const QString& name)
{
    static const QRegularExpression form(QStringLiteral("\\A[A-Za-z0-9_][A-Za-z0-9._-]{0,63}\\z"));
    return form.match(name).hasMatch();
}

QString StateFolder::snapshotFile(const QString& name) const
{
    if (!isSnapshotName(name))
        throw MemoryError(QStringLiteral("\"%1\" is no name of a snapshot").arg(name));
    return QDir(m_folder).filePath(QStringLiteral("snapshots/") + name + ending);
}

QStringList StateFolder::snapshots() const
{
    const QDir folder(QDir(m_folder).filePath(QStringLiteral("snapshots")));
    QStringList names;
    for (const QString& file : folder.entryList({QLatin1Char('*') + ending}, QDir::Files, QDir::Name))
        names.append(file.chopped(ending.size()));
    return names;
}

void StateFolder::keepSnapshot(const QString& name) const
{
    const QString file = snapshotFile(name);
    if (!QFile::exists(stateFile()))
        throw MemoryError(QStringLiteral("there is none that a snapshot could keep"));
    // A damaged state is not to take the place of a good snapshot.
    checkState(stateFile());
    QDir(m_folder).mkpath(QStringLiteral("snapshots"));
    const QString fresh = freshBeside(file);
    StateStore(stateFile()).copyTo(fresh);
    replace(file, fresh);
}

void StateFolder::removeSnapshot(const QString& name) const
{
    const QString file = snapshotFile(name);
    if (!QFile::remove(file))
        throw MemoryError(QStringLiteral("%1 cannot be removed").arg(file));
    removeLogs(file);
}

void StateFolder::restoreSnapshot(const QString& name, const Identity* wanted) const
{
    const QString file = snapshotFile(name);
    if (!QFile::exists(file)) {
        const QString all = snapshots().join(QStringLiteral(", "));
        throw MemoryError(QStringLiteral("it has no snapshot \"%1\"; it has %2")
                              .arg(name, all.isEmpty() ? QStringLiteral("none at all") : all));
    }
    const QString fresh = freshBeside(stateFile());
    if (!QFile::copy(file, fresh))
        throw MemoryError(QStringLiteral("the snapshot cannot be copied to %1").arg(fresh));
    try {
        checkState(fresh);
    } catch (const MemoryError& error) {
        throw MemoryError(QStringLiteral("its snapshot \"%1\" cannot be used: %2").arg(name, error.text()));
    }
    if (wanted != nullptr)
        checkIdentity(fresh, *wanted);
    emptyLog();
    replace(stateFile(), fresh);
}

void StateFolder::removeState() const
{
    const QString file = stateFile();
    if (QFile::exists(file) && !QFile::remove(file))
        throw MemoryError(QStringLiteral("%1 cannot be removed").arg(file));
    removeLogs(file);
}

void StateFolder::emptyLog() const
{
    // The last one that closes a state empties its log. Of one that cannot be opened nothing is wanted.
    try {
        if (QFile::exists(stateFile()))
            checkState(stateFile());
    } catch (const MemoryError&) {
    }
    removeLogs(stateFile());
}

} // namespace emulator
