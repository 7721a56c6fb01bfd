#include "journalfault.h"

#include "accessadvice.h"
#include "saletr.h"

#include <QSqlError>

#include <cerrno>

namespace sale {

namespace {

/// The codes of SQLite, without what it adds in the upper bits.
enum Fault {
    Busy = 5,
    Locked = 6,
    ReadOnly = 8,
    Input = 10,
    Corrupt = 11,
    Full = 13,
    CannotOpen = 14,
    NoDatabase = 26
};

QString advice(const QString& fileName, int code)
{
    switch (code) {
    case Busy:
    case Locked:
        return tr("another program has it locked; try again, and end that program if it hangs");
    case Full:
        return tr("the disk is full; nothing is sold until there is room");
    case Corrupt:
    case NoDatabase:
        return tr("it is damaged; put a backup in its place (a service is told so by frserver restored), or "
                  "move it away and look through the register's tape before you accept what it has");
    case Input:
        return tr("the disk fails or has no room");
    case ReadOnly:
    case CannotOpen:
        return accessAdvice(fileName);
    default:
        return {};
    }
}

JournalError faultOf(const QString& fileName, const QString& what, const QString& toDo)
{
    return JournalError(tr("journal %1: %2").arg(fileName, what), toDo);
}

int codeOf(const QSqlError& error)
{
    constexpr int plainCode = 0xFF;
    return error.nativeErrorCode().toInt() & plainCode;
}

QString wordsOf(const QSqlError& error)
{
    return error.databaseText().isEmpty() ? error.text() : error.databaseText();
}

/// The journal itself is sound.
JournalError copyFault(const QString& fileName, const QString& what, int error)
{
    const QString toDo = error == EEXIST     ? tr("name one that is not there")
        : error == ENOSPC || error == EDQUOT ? tr("name one on a disk that has room")
                                             : tr("name one that this user can make");
    return JournalError(tr("the copy %1 cannot be made: %2").arg(fileName, what), toDo);
}

} // namespace

bool isOfJournal(const QSqlError& error)
{
    switch (codeOf(error)) {
    case Busy:
    case Locked:
    case Corrupt:
    case NoDatabase:
        return true;
    default:
        return false;
    }
}

bool isOfWriting(const QSqlError& error)
{
    const int code = codeOf(error);
    return code == Full || code == ReadOnly || code == Input;
}

JournalError journalFault(const QString& fileName, const QSqlError& error)
{
    // In the words of the triggers that a move leaves behind.
    if (error.databaseText().contains(QStringLiteral("has moved to another machine")))
        return movedJournal(fileName);
    return faultOf(fileName, wordsOf(error), advice(fileName, codeOf(error)));
}

JournalError journalFault(const QString& fileName, int error)
{
    const int code = error == ENOSPC || error == EDQUOT ? Full : error == EIO ? Input : CannotOpen;
    return faultOf(fileName, qt_error_string(error), advice(fileName, code));
}

JournalError formerJournalFault(const QString& fileName, const QSqlError& error)
{
    switch (codeOf(error)) {
    case Busy:
    case Locked:
    case ReadOnly:
    case CannotOpen:
        return journalFault(fileName, error);
    default:
        return formerJournalFault(fileName, wordsOf(error));
    }
}

JournalError formerJournalFault(const QString& fileName, const QString& what)
{
    return JournalError(tr("former journal %1 cannot be taken over: %2; put a backup in its place, or move "
                           "it away to go on without what it knows as sold")
                            .arg(fileName, what));
}

JournalError formerJournalFault(const QString& fileName, int error)
{
    return JournalError(tr("former journal %1 cannot be looked at: %2; make it reachable (a disk that is not "
                           "mounted, a folder without rights), it may know as sold what is to be sold")
                            .arg(fileName, qt_error_string(error)));
}

JournalError copyFault(const QString& fileName, const QSqlError& error)
{
    const bool isFull = codeOf(error) == Full || codeOf(error) == Input;
    return copyFault(fileName, wordsOf(error), isFull ? ENOSPC : 0);
}

JournalError copyFault(const QString& fileName, int error)
{
    return copyFault(fileName, qt_error_string(error), error);
}

JournalError foreignJournal(const QString& fileName)
{
    return faultOf(
        fileName, tr("it is a file of another program"), tr("name another file, or move this one away"));
}

JournalError lostJournal(const QString& fileName)
{
    return faultOf(fileName, tr("it was moved away or replaced while it was in use"),
        tr("put it back, or start the program again to go on with what is there now"));
}

JournalError movedJournal(const QString& fileName)
{
    return faultOf(fileName, tr("it has moved to another machine"),
        tr("sell there, or export it there and import it here"));
}

JournalError laterJournal(const QString& fileName)
{
    return faultOf(fileName, tr("it was written by a later release"),
        tr("install that release again; an older copy in its place does not know what was sold since"));
}

} // namespace sale
