#include "http/eventhistory.h"

#include <QList>
#include <QRandomGenerator>

namespace http {

namespace {

QByteArray freshRun()
{
    return QByteArray::number(QRandomGenerator::system()->generate64(), 36);
}

} // namespace

EventHistory::EventHistory(qsizetype kept, const QByteArray& run, qint64 lastNumber)
    : m_kept(static_cast<size_t>(kept))
    , m_run(run.isEmpty() ? freshRun() : run)
    , m_lastNumber(lastNumber)
{
}

qint64 EventHistory::publish(const QByteArray& type, const QJsonObject& data)
{
    m_events.push_back({++m_lastNumber, type, data});
    if (m_events.size() > m_kept)
        m_events.pop_front();
    const qint64 number = m_lastNumber;
    tellListeners();
    return number;
}

QByteArray EventHistory::idOf(qint64 number) const
{
    return m_run + '-' + QByteArray::number(number);
}

std::optional<qint64> EventHistory::positionOf(const QByteArray& id) const
{
    const qsizetype dash = id.lastIndexOf('-');
    bool isNumber = false;
    const qint64 number = id.mid(dash + 1).toLongLong(&isNumber);
    const bool isOurs = dash >= 0 && id.left(dash) == m_run && isNumber && number <= m_lastNumber;
    if (!isOurs || !isWholeAfter(number))
        return std::nullopt;
    return number;
}

bool EventHistory::isWholeAfter(qint64 number) const
{
    return number == m_lastNumber || (!m_events.empty() && number >= m_events.front().number - 1);
}

const Event* EventHistory::next(qint64 after, const EventFilter& filter) const
{
    if (m_events.empty())
        return nullptr;
    const qint64 passed = std::max<qint64>(after - m_events.front().number + 1, 0);
    for (auto index = static_cast<size_t>(passed); index < m_events.size(); ++index) {
        if (!filter || filter(m_events.at(index)))
            return &m_events.at(index);
    }
    return nullptr;
}

int EventHistory::listen(const std::function<void()>& listener)
{
    m_listeners.emplace(++m_lastListener, listener);
    return m_lastListener;
}

void EventHistory::unlisten(int listener)
{
    m_listeners.erase(listener);
}

void EventHistory::tellListeners()
{
    QList<int> listeners;
    for (const auto& [number, listener] : m_listeners)
        listeners.append(number);
    // Some of them cease to listen while they are told, on behalf of others even.
    for (const int number : listeners) {
        if (const auto found = m_listeners.find(number); found != m_listeners.end())
            std::function<void()>(found->second)();
    }
}

} // namespace http
