#pragma once

#include "trace/meaning.h"

namespace trace {

/// What tells a register from another one, as far as it was told.
struct Identity
{
    QString serial;
    /// Tax number that it is registered with; over HEX, where it was asked for.
    QString inn;
    /// Number of its fiscal drive.
    QString drive;

    /// Takes what an answer tells.
    void take(const Meaning& answer);
};

/// Requests that ask a register for it, in the way of the trace's host and with its password. They change
/// nothing and want no start of work. Empty for a trace without requests.
Trace identityQuestions(const Trace& trace, bool hasInn = false);

} // namespace trace
