#include "http/bodyroom.h"

#include "http/intake.h"

#include <algorithm>

namespace http {

BodyRoom::BodyRoom(qint64 size)
    : m_size(size)
{
}

bool BodyRoom::claim(Intake& intake, qint64 bytes)
{
    while (m_taken + bytes > m_size) {
        const auto largest = std::max_element(m_held.begin(), m_held.end(),
            [](const auto& left, const auto& right) { return left.second < right.second; });
        if (largest == m_held.end() || largest->second <= m_held[&intake] + bytes)
            return false;
        largest->first->loseRoom();
    }
    m_held[&intake] += bytes;
    m_taken += bytes;
    return true;
}

void BodyRoom::release(const Intake& intake)
{
    const auto held = m_held.find(const_cast<Intake*>(&intake));
    if (held == m_held.end())
        return;
    m_taken -= held->second;
    m_held.erase(held);
}

} // namespace http
