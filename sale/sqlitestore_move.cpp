#include "sqlitestore.h"

#include "placeonfile.h"
#include "storedtime.h"

#include <QFile>

namespace sale {

namespace {

// They hold for every program that has the file open, also for one of a release before, and go with it when
// it is copied.
constexpr const char* movedTriggers[][2] = {
    {"moved_new", "INSERT ON documents"},
    {"moved_document", "UPDATE ON documents"},
    {"moved_attempt", "INSERT ON attempts"},
    {"moved_note", "UPDATE ON attempts"},
};

} // namespace

bool SqliteStore::isMoved() const
{
    return m_connection
        .value(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'trigger' AND name = 'moved_new'"))
        .isValid();
}

void SqliteStore::moveTo(const QString& exportFile)
{
    if (lookAt(exportFile))
        throw JournalError(
            QStringLiteral("%1 is there already").arg(exportFile), QStringLiteral("name one that is not"));
    const bool wasMoved = isMoved();
    if (!wasMoved)
        endHere();
    try {
        backUp(exportFile);
    } catch (const JournalError&) {
        // Nobody has it but this machine, which goes on with it.
        if (!wasMoved)
            goOn();
        throw;
    }
}

void SqliteStore::endHere()
{
    m_connection.together([this] {
        const QList<DocumentState> running{DocumentState::Running};
        const QList<StoredDocument> found = find({.states = running, .limit = 1, .withAttempts = false});
        if (!found.isEmpty())
            throw wrongOrder(found.constFirst().request.id,
                QStringLiteral("is under way: it has to come to its end on this machine"));
        for (const auto& [name, event] : movedTriggers)
            m_connection.execute(QStringLiteral("CREATE TRIGGER %1 BEFORE %2 BEGIN SELECT RAISE(ABORT, "
                                                "'this journal has moved to another machine'); END")
                                     .arg(QLatin1String(name), QLatin1String(event)));
    });
}

void SqliteStore::goOn()
{
    m_connection.together([this] {
        for (const auto& [name, event] : movedTriggers)
            m_connection.execute(QStringLiteral("DROP TRIGGER %1").arg(QLatin1String(name)));
    });
}

void SqliteStore::moveIn(const QString& exportFile, const QString& fileName)
{
    if (lookAt(fileName))
        throw JournalError(QStringLiteral("there is a journal %1 already").arg(fileName),
            QStringLiteral("move it away first, if nothing in it matters any more"));
    if (!lookAt(exportFile))
        throw JournalError(QStringLiteral("%1 is not there").arg(exportFile));
    const QString beginning = fileName + QStringLiteral(".moving");
    QFile::remove(beginning);
    {
        const SqliteStore source(exportFile);
        if (!source.isMoved())
            throw JournalError(QStringLiteral("%1 was not made for a move").arg(exportFile),
                QStringLiteral("the machine that it comes from would go on with it, too"));
        const QStringList damages = source.damages();
        if (!damages.isEmpty())
            throw JournalError(
                QStringLiteral("%1 is damaged: %2").arg(exportFile, damages.join(QStringLiteral("; "))));
        source.copyForGroup(beginning);
    }
    SqliteStore(beginning).goOn();
    // Whole or not there.
    if (!QFile::rename(beginning, fileName))
        throw JournalError(QStringLiteral("%1 cannot be made").arg(fileName));
}

void SqliteStore::copyForGroup(const QString& fileName) const
{
    // Its mode is that of a journal, for SQLite an empty file is none yet.
    {
        const SqliteConnection made(fileName, 0);
    }
    m_connection.copyTo(fileName);
}

} // namespace sale
