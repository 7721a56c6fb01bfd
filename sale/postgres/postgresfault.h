#pragma once

#include "journalerror.h"

#include <QString>

class QSqlError;

namespace sale {

struct PostgresPlace;

/// The connection is gone, and with it what was not committed.
class ConnectionLost : public JournalError
{
public:
    using JournalError::JournalError;
};

/// Another transaction came between: the same once more will do.
class RunAgain : public JournalError
{
public:
    using JournalError::JournalError;
};

/// Throws ConnectionLost, RunAgain, WrongPlace or JournalError, with what is to be done. Of one that has not
/// let this process in the code is told apart (PostgresLibrary::refusalOf).
[[noreturn]] void throwPostgresFault(
    const PostgresPlace& place, const QSqlError& error, const QString& refusal = {});
/// Throws ConnectionLost: nobody waits for the server's answer any longer.
[[noreturn]] void throwSilence(const PostgresPlace& place);
/// Throws JournalError: that process of the server has the table, or comes next.
[[noreturn]] void throwTableLock(const PostgresPlace& place, const QString& table, qint64 process);
/// Others were waited for in vain.
bool isLockTimeout(const QSqlError& error);

} // namespace sale
