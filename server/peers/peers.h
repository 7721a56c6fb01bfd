#pragma once

#include "api/opensweep.h"
#include "peers/peerline.h"

namespace sale {
struct StoredDocument;
}

namespace frserver {

class Api;

/// This service among those that share its database: what one does is known to all of them at once, and what
/// was missed within seconds.
class Peers : public QObject
{
public:
    /// The interface and the store must outlive it. Throws sale::JournalError.
    Peers(const sale::PostgresPlace& place, Api& api, sale::DocumentStore& store);

    void start();
    /// Of itself every few seconds: what was not heard.
    void look();

private:
    void hear(const QJsonObject& message);
    void sayDocument(const sale::StoredDocument& document);

    Api& m_api;
    PeerLine m_line;
    OpenSweep m_sweep;
    QTimer m_timer;
};

} // namespace frserver
