#pragma once

#include "journalerror.h"

class QSqlError;

namespace sale {

/// What is wrong with the file, and what to do about it.
JournalError journalFault(const QString& fileName, const QSqlError& error);
/// For a file or folder that cannot be had at all: errno.
JournalError journalFault(const QString& fileName, int error);
/// For a file that is no journal and not a damaged one.
JournalError foreignJournal(const QString& fileName);
/// For a file that is not any more what was opened under its name.
JournalError lostJournal(const QString& fileName);
/// For a journal that another machine goes on with.
JournalError movedJournal(const QString& fileName);
/// For a journal of a release that is not known yet.
JournalError laterJournal(const QString& fileName);

/// The same of a journal that is to be taken over.
JournalError formerJournalFault(const QString& fileName, const QSqlError& error);
JournalError formerJournalFault(const QString& fileName, const QString& what);
/// For one of which nobody can say whether it is there: errno.
JournalError formerJournalFault(const QString& fileName, int error);

/// The same of a copy that is to be made.
JournalError copyFault(const QString& fileName, const QSqlError& error);
JournalError copyFault(const QString& fileName, int error);
/// Whether a copy failed of what the journal is: locked or damaged.
bool isOfJournal(const QSqlError& error);
/// Whether it is of a disk that takes no more.
bool isOfWriting(const QSqlError& error);

} // namespace sale
