#pragma once

#include "journalerror.h"

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

/// Throws ConnectionLost, RunAgain or JournalError, with what is to be done.
[[noreturn]] void throwPostgresFault(const PostgresPlace& place, const QSqlError& error);
/// Throws ConnectionLost: nobody waits for the server's answer any longer.
[[noreturn]] void throwSilence(const PostgresPlace& place);

} // namespace sale
