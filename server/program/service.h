#pragma once

#include "access/tokenfile.h"
#include "api/api.h"
#include "configuration/configuration.h"
#include "http/server.h"
#include "peers/peers.h"
#include "program/agenttill.h"
#include "program/dispatchpool.h"
#include "program/listenaddress.h"
#include "program/pictureprocesses.h"
#include "rack/keptstates.h"
#include "rack/rack.h"
#include "sqlstore.h"
#include "webhook/webhook.h"

#include <memory>
#include <vector>

namespace frserver {

/// The whole service: journal, registers, interface.
class Service
{
public:
    /// The journal is the file or the database that the configuration names, or the machine's. Throws
    /// sale::JournalError.
    Service(const Configuration& configuration, const QString& journal);

    /// Reads certificate and key anew, if there is to be TLS. Throws http::TlsError; then the former ones
    /// stay.
    void readIdentity();
    /// Throws http::ListenError.
    void start(const ListenAddress& listen);
    /// Such as "http://127.0.0.1:8403".
    QString url() const { return m_server.url(); }
    /// Reads the tokens anew. When they cannot be read, or have gone, nobody is let in: why is given back.
    QString readTokens();
    /// Accepts nothing any longer and lets the documents under way finish, as long as a register may take for
    /// one; then calls back, once.
    void stop(const std::function<void()>& stopped);

    /// Where the tokens are kept.
    static QString tokenFile(const ServiceSettings& settings, const QString& journal);

private:
    void add(RegisterAgent& agent);
    void add(const PoolSettings& settings);
    void startWebhook(const ServiceSettings& settings);

    const QString m_certificate;
    const QString m_key;
    bool m_isOpen = false;
    bool m_areTokensWanted = false;
    std::unique_ptr<sale::SqlStore> m_store;
    Owners m_owners;
    Outbox m_outbox;
    KeptStates m_kept;
    TokenFile m_tokens;
    Rack m_rack;
    PoolDispatch m_dispatch;
    std::vector<std::unique_ptr<AgentTill>> m_tills;
    std::vector<std::unique_ptr<DispatchPool>> m_pools;
    PictureProcesses m_pictures;
    Api m_api;
    std::unique_ptr<Webhook> m_webhook;
    /// With a database of many machines.
    std::unique_ptr<Peers> m_peers;
    http::Server m_server;
    QTimer m_patience;
};

} // namespace frserver
