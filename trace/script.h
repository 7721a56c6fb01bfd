#pragma once

#include "trace/meaning.h"

#include <QStringList>

namespace trace {

/// What a host sent, and what came back before it sent the next.
struct Exchange
{
    Frame request;
    Meaning meaning;
    QList<Frame> answers;

    /// The answer that counts: the last one with the request's id; null when none came.
    const Frame* answer() const;
};

/// The exchanges of a trace in order. How often a host asked whether the register lives, and what it was
/// told, is left out: that is a matter of time. Bytes of the host that are no frame are left out, too.
QList<Exchange> exchangesOf(const Trace& trace);

/// Whether its first request is of that protocol.
bool isHex(const Trace& trace);

/// The commands of a trace that do more than ask, each once: what they make or set, a register that it is
/// played to makes or sets again. Starting work is none.
QStringList changesOf(const Trace& trace);

/// Whether it starts a register's work over HEX: one that was switched on since does nothing before.
bool startsWork(const Trace& trace);

} // namespace trace
