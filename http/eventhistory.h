#pragma once

#include "http/event.h"

#include <deque>
#include <map>
#include <optional>

namespace http {

/// The last events of a stream, and who wants to hear of new ones.
class EventHistory
{
public:
    EventHistory(qsizetype kept, const QByteArray& run, qint64 lastNumber);

    qint64 publish(const QByteArray& type, const QJsonObject& data);
    qint64 lastNumber() const { return m_lastNumber; }
    QByteArray idOf(qint64 number) const;
    /// Nothing for an id of another run, or when events after it are no longer kept.
    std::optional<qint64> positionOf(const QByteArray& id) const;
    /// Whether all events after that number are kept.
    bool isWholeAfter(qint64 number) const;
    /// The first such event after that number; null when there is none.
    const Event* next(qint64 after, const EventFilter& filter) const;

    int listen(const std::function<void()>& listener);
    void unlisten(int listener);

private:
    void tellListeners();

    size_t m_kept;
    QByteArray m_run;
    qint64 m_lastNumber;
    std::deque<Event> m_events;
    int m_lastListener = 0;
    std::map<int, std::function<void()>> m_listeners;
};

} // namespace http
