#pragma once

#include "journalerror.h"

class QSqlError;

namespace sale {

/// What is wrong with the file, and what to do about it.
JournalError journalFault(const QString& fileName, const QSqlError& error);
/// For a file or folder that cannot be had at all: errno.
JournalError journalFault(const QString& fileName, int error);
/// For a file that can be read, and of which a check says what is damaged.
JournalError damagedJournal(const QString& fileName, const QString& what);

} // namespace sale
