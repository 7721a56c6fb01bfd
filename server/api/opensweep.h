#pragma once

#include <QTimer>

namespace sale {
class DocumentStore;
}

namespace frserver {

class Api;

/// Looks at all that is open in a journal that others write, too, and tells the interface what it has not
/// heard of. A long queue is gone through piece by piece, so that nobody is kept waiting.
class OpenSweep
{
public:
    /// Both must outlive it.
    OpenSweep(Api& api, const sale::DocumentStore& store, int piece = 500);

    /// From the beginning, unless it is under way.
    void begin();
    bool isUnderWay() const { return m_timer.isActive(); }

private:
    void lookOn();
    /// Whether there is more.
    bool lookAtPiece();

    Api& m_api;
    const sale::DocumentStore& m_store;
    const int m_piece;
    QTimer m_timer;
    qint64 m_place = 0;
};

} // namespace frserver
