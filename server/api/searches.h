#pragma once

#include <QTimer>

#include <deque>
#include <functional>

namespace frserver {

/// Searches of a long journal, one piece of one of them at a time: many keep the others waiting no longer
/// than one does.
class Searches
{
public:
    Searches();

    /// Looks at a piece, and says whether there is another one.
    using Piece = std::function<bool()>;
    void add(Piece piece);

private:
    void lookOn();

    std::deque<Piece> m_waiting;
    QTimer m_turn;
};

} // namespace frserver
