#pragma once

#include <QtGlobal>

namespace http {

/// What a server has seen since its start, and what it has now.
struct Counters
{
    qint64 accepted = 0;
    /// Closed at once: too many connections, or too many of one address.
    qint64 refused = 0;
    /// Closed because a request, the taking of an answer, or silence took too long.
    qint64 overdue = 0;
    qint64 requests = 0;
    /// Bodies that were too large, or found no room.
    qint64 refusedBodies = 0;
    /// Now:
    int connections = 0;
    int waiting = 0;
    int streaming = 0;
};

} // namespace http
