#pragma once

#include "http/eventhistory.h"
#include "http/stream.h"

#include <memory>

namespace http {

/// Events as one client reads them. It keeps its place only, so that a slow client costs nothing: one that
/// falls behind what is kept gets a "reset".
class EventSubscription : public Stream
{
public:
    EventSubscription(std::shared_ptr<EventHistory> history, std::optional<qint64> place, EventFilter filter);
    ~EventSubscription() override;

    QByteArray contentType() const override { return "text/event-stream"; }
    QByteArray take() override;
    QByteArray keepAlive() const override { return ":\n\n"; }

private:
    QByteArray opening();
    QByteArray reset();

    std::shared_ptr<EventHistory> m_history;
    EventFilter m_filter;
    qint64 m_place;
    bool m_isReset;
    bool m_isOpened = false;
    int m_listener;
};

} // namespace http
