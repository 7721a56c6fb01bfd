#pragma once

#include "http/answer.h"
#include "http/event.h"
#include "http/request.h"

namespace http {

class EventHistory;

/// Events of a program, told to clients as they come (text/event-stream) or waited for. The last ones are
/// kept, so that a client that comes back with Last-Event-ID misses none; one that missed more, or that knew
/// an earlier run of the program, is sent an event "reset" first and asks for everything anew.
class EventStream
{
public:
    /// Keeps that many events. Ids are "RUN-NUMBER"; a program that keeps its events over restarts gives
    /// both.
    explicit EventStream(qsizetype kept = 1000, const QByteArray& run = {}, qint64 lastNumber = 0);
    ~EventStream();
    EventStream(const EventStream&) = delete;
    EventStream& operator=(const EventStream&) = delete;

    /// The number of the event.
    qint64 publish(const QByteArray& type, const QJsonObject& data);
    qint64 lastNumber() const;
    /// As clients get it and give it back.
    QByteArray idOf(qint64 number) const;

    /// The events from now on, or those after the request's Last-Event-ID (a header, or lastEventId in the
    /// query).
    std::shared_ptr<Stream> subscribe(const Request& request, const EventFilter& filter = {}) const;
    /// The first such event after that id (empty: from now on), answered at once when it is kept. At the end
    /// of the time: 204.
    std::shared_ptr<Pending> wait(
        const EventFilter& filter, Pending::Time timeout, const QByteArray& afterId = {}) const;

private:
    std::shared_ptr<EventHistory> m_history;
};

} // namespace http
