#include "http/eventsubscription.h"

#include <QJsonDocument>

namespace http {

namespace {

/// About what one write takes.
constexpr qsizetype portion = 16LL * 1024;

QByteArray written(const Event& event, const QByteArray& id)
{
    return "id: " + id + "\nevent: " + event.type
        + "\ndata: " + QJsonDocument(event.data).toJson(QJsonDocument::Compact) + "\n\n";
}

} // namespace

EventSubscription::EventSubscription(
    std::shared_ptr<EventHistory> history, std::optional<qint64> place, EventFilter filter)
    : m_history(std::move(history))
    , m_filter(std::move(filter))
    , m_place(place.value_or(m_history->lastNumber()))
    , m_isReset(!place)
    , m_listener(m_history->listen([this] { wake(); }))
{
}

EventSubscription::~EventSubscription()
{
    m_history->unlisten(m_listener);
}

QByteArray EventSubscription::take()
{
    QByteArray text = m_isOpened ? QByteArray() : opening();
    if (m_isReset || !m_history->isWholeAfter(m_place))
        text += reset();
    while (text.size() < portion) {
        const Event* event = m_history->next(m_place, m_filter);
        if (!event)
            break;
        m_place = event->number;
        text += written(*event, m_history->idOf(m_place));
    }
    return text;
}

/// An id without data is no event, but browsers come back with it.
QByteArray EventSubscription::opening()
{
    m_isOpened = true;
    return "retry: 1000\nid: " + m_history->idOf(m_place) + "\n\n";
}

QByteArray EventSubscription::reset()
{
    m_isReset = false;
    m_place = m_history->lastNumber();
    return written({m_place, "reset", {}}, m_history->idOf(m_place));
}

} // namespace http
