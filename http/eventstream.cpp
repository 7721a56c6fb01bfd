#include "http/eventstream.h"

#include "http/eventhistory.h"
#include "http/eventsubscription.h"
#include "http/problem.h"

namespace http {

namespace {

QByteArray lastEventId(const Request& request)
{
    const QByteArray id = request.headers.value("Last-Event-ID");
    return id.isEmpty() ? request.queryValue(QStringLiteral("lastEventId")).value_or(QString()).toLatin1()
                        : id;
}

Response told(const Event& event, const QByteArray& id)
{
    return Response::json(QJsonObject{{QStringLiteral("id"), QString::fromLatin1(id)},
        {QStringLiteral("event"), QString::fromLatin1(event.type)}, {QStringLiteral("data"), event.data}});
}

/// Answers with the first event behind the place; whether there was one.
bool answerFrom(const EventHistory& history, qint64 after, const EventFilter& filter, Pending& pending)
{
    const Event* event = history.next(after, filter);
    if (event)
        pending.answer(told(*event, history.idOf(event->number)));
    return event;
}

/// One that waits: its number as a listener, and how far it has looked.
struct Waiter
{
    int listener = 0;
    qint64 place = 0;
};

void answerLater(
    EventHistory* history, const EventFilter& filter, const std::weak_ptr<Pending>& waiting, Waiter& waiter)
{
    const std::shared_ptr<Pending> pending = waiting.lock();
    if (!pending || answerFrom(*history, waiter.place, filter, *pending))
        history->unlisten(waiter.listener);
    else
        waiter.place = history->lastNumber();
}

void listen(const std::shared_ptr<EventHistory>& history, const EventFilter& filter,
    const std::shared_ptr<Pending>& pending)
{
    const auto waiter = std::make_shared<Waiter>(Waiter{0, history->lastNumber()});
    const std::weak_ptr<Pending> waiting = pending;
    waiter->listener = history->listen([history = history.get(), filter, waiting, waiter] {
        answerLater(history, filter, waiting, *waiter);
    });
    pending->onGone([kept = std::weak_ptr<EventHistory>(history), waiter] {
        if (const auto still = kept.lock())
            still->unlisten(waiter->listener);
    });
}

} // namespace

EventStream::EventStream(qsizetype kept, const QByteArray& run, qint64 lastNumber)
    : m_history(std::make_shared<EventHistory>(kept, run, lastNumber))
{
}

EventStream::~EventStream() = default;

qint64 EventStream::publish(const QByteArray& type, const QJsonObject& data)
{
    return m_history->publish(type, data);
}

qint64 EventStream::lastNumber() const
{
    return m_history->lastNumber();
}

QByteArray EventStream::idOf(qint64 number) const
{
    return m_history->idOf(number);
}

std::shared_ptr<Stream> EventStream::subscribe(const Request& request, const EventFilter& filter) const
{
    const QByteArray id = lastEventId(request);
    const std::optional<qint64> place = id.isEmpty() ? m_history->lastNumber() : m_history->positionOf(id);
    return std::make_shared<EventSubscription>(m_history, place, filter);
}

std::shared_ptr<Pending> EventStream::wait(
    const EventFilter& filter, Pending::Time timeout, const QByteArray& afterId) const
{
    const std::optional<qint64> place
        = afterId.isEmpty() ? m_history->lastNumber() : m_history->positionOf(afterId);
    if (!place)
        throw Problem(410, QStringLiteral("Events after this id are not kept: ask for the state anew."));
    auto pending = std::make_shared<Pending>(timeout, Response::empty());
    if (!answerFrom(*m_history, *place, filter, *pending))
        listen(m_history, filter, pending);
    return pending;
}

} // namespace http
