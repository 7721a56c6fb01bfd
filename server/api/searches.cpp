#include "api/searches.h"

#include <utility>

namespace frserver {

Searches::Searches()
{
    m_turn.setSingleShot(true);
    QObject::connect(&m_turn, &QTimer::timeout, &m_turn, [this] { lookOn(); });
}

void Searches::add(Piece piece)
{
    m_waiting.push_back(std::move(piece));
    m_turn.start(0);
}

void Searches::lookOn()
{
    const Piece piece = std::move(m_waiting.front());
    m_waiting.pop_front();
    if (piece())
        m_waiting.push_back(piece);
    if (!m_waiting.empty())
        m_turn.start(0);
}

} // namespace frserver
