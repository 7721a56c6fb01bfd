#include "http/pending.h"

namespace http {

Pending::Pending(Time timeout, const Response& atTimeout)
    : m_timeout(timeout)
    , m_atTimeout(atTimeout)
{
}

void Pending::answer(const Response& response)
{
    if (m_isOver)
        return;
    m_response = response;
    end(m_answered);
}

void Pending::expire()
{
    if (m_isOver)
        return;
    m_response = m_atTimeout;
    end(m_gone);
}

void Pending::leave()
{
    if (!m_isOver)
        end(m_gone);
}

void Pending::end(const std::function<void()>& callback)
{
    m_isOver = true;
    // A copy, since either callback may hold what the other one frees.
    const std::function<void()> called = callback;
    m_answered = nullptr;
    m_gone = nullptr;
    if (called)
        called();
}

} // namespace http
