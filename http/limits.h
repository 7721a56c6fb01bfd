#pragma once

#include <QtGlobal>

#include <chrono>

namespace http {

/// What clients may take of a server, whatever they do.
struct Limits
{
    using Time = std::chrono::milliseconds;

    /// Of one request; more is 413.
    qint64 body = 1024LL * 1024;
    /// Of those that are being received, together; more is 503.
    qint64 bodies = 16LL * 1024 * 1024;
    /// Of memory a connection, into which the header has to fit (431).
    qint64 connectionMemory = 16LL * 1024;
    /// More are closed at once and counted.
    int connections = 2048;
    /// From one address, before and after it showed a token, or asked anything where there are none.
    int connectionsOfStranger = 32;
    int connectionsOfCaller = 1024;
    /// From the connection, or the request's first line, to the last byte of the body, however steadily it
    /// comes.
    Time request{10'000};
    /// Until the next request; also for a client to take a whole answer, or the next portion of a stream.
    Time idle{60'000};
    /// How often a stream is sent something, so that one whose client has gone fails.
    Time keepAlive{15'000};
};

} // namespace http
