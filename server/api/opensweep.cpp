#include "api/opensweep.h"

#include "api/api.h"
#include "journalerror.h"

namespace frserver {

namespace {

/// Between two pieces; each takes some milliseconds.
constexpr std::chrono::milliseconds pause(100);

} // namespace

OpenSweep::OpenSweep(Api& api, const sale::DocumentStore& store, int piece)
    : m_api(api)
    , m_store(store)
    , m_piece(piece)
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { lookOn(); });
}

void OpenSweep::begin()
{
    if (isUnderWay())
        return;
    m_place = 0;
    m_api.openDocuments().beginSweep();
    lookOn();
}

void OpenSweep::lookOn()
{
    try {
        if (lookAtPiece())
            return m_timer.start(pause);
        for (const QString& id : m_api.openDocuments().unseen())
            m_api.lookAt(id);
    } catch (const sale::JournalError&) {
        // Whoever begins the next one tells of it.
    }
}

bool OpenSweep::lookAtPiece()
{
    const QList<sale::StoredDocument> open = m_store.find({.states = OpenList::states(),
        .after = m_place,
        .limit = m_piece,
        .withAttempts = false,
        .withBodies = false,
        .withTimes = false});
    for (const sale::StoredDocument& document : open) {
        if (!m_api.openDocuments().see(document))
            m_api.heard(document);
    }
    if (open.size() < m_piece)
        return false;
    m_place = open.constLast().sequence;
    return true;
}

} // namespace frserver
