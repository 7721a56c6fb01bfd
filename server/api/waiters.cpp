#include "api/waiters.h"

#include <algorithm>

namespace frserver {

Waiters::Waiters(const std::function<http::Response(const QString& id)>& late,
    const std::function<void(const QString& id, bool isAwaited)>& setAwaited)
    : m_late(late)
    , m_setAwaited(setAwaited)
{
}

std::shared_ptr<http::Pending> Waiters::wait(const QString& id, std::chrono::seconds time)
{
    // The answer of the end is that of the end's moment, which the server cannot know now.
    constexpr std::chrono::seconds slack(10);
    const auto pending = std::make_shared<http::Pending>(time + slack, http::Response::empty(503));
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    // By weak ones: the client may be gone then.
    const std::weak_ptr<http::Pending> weak = pending;
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this, id, weak] {
        if (const auto late = weak.lock()) {
            late->answer(m_late(id));
            remove(id, late.get());
        }
    });
    timer->start(time);
    pending->onGone([this, id, gone = pending.get()] { remove(id, gone); });
    std::shared_ptr<std::vector<Waiter>>& all = m_waiters[id];
    if (!all)
        all = std::make_shared<std::vector<Waiter>>();
    all->push_back({pending, std::move(timer)});
    if (all->size() == 1)
        m_setAwaited(id, true);
    return pending;
}

void Waiters::answer(const QString& id, const http::Response& response)
{
    const std::shared_ptr<std::vector<Waiter>> all = m_waiters.take(id);
    if (!all)
        return;
    m_setAwaited(id, false);
    for (const Waiter& waiter : *all)
        waiter.pending->answer(response);
}

void Waiters::release()
{
    for (const QString& id : ids())
        answer(id, m_late(id));
}

void Waiters::remove(const QString& id, const http::Pending* pending)
{
    const auto place = m_waiters.constFind(id);
    if (place == m_waiters.cend())
        return;
    std::vector<Waiter>& all = **place;
    const auto found = std::find_if(
        all.begin(), all.end(), [pending](const Waiter& waiter) { return waiter.pending.get() == pending; });
    if (found == all.end())
        return;
    // It may be its own time-out that removes it.
    found->timer.release()->deleteLater();
    all.erase(found);
    if (!all.empty())
        return;
    m_waiters.erase(place);
    m_setAwaited(id, false);
}

} // namespace frserver
