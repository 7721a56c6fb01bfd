#pragma once

#include "api/opensweep.h"
#include "peers/losswatch.h"
#include "peers/peerline.h"
#include "peers/rackboard.h"
#include "peers/racktill.h"

#include "postgres/registerleases.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QJsonArray>
#include <QSet>

#include <map>
#include <memory>

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
    /// A service that has told nothing for as long as a lease is taken for dead. Interface and store must
    /// outlive it. Throws sale::JournalError.
    Peers(const sale::PostgresPlace& place, Api& api, sale::DocumentStore& store, std::chrono::seconds lease,
        const LossWatch::Clock& clock = sale::RegisterLeases::timeSinceBoot);
    /// The others know at once that this service is gone.
    ~Peers() override;

    /// A register that this service works, or would; must outlive it.
    void add(Till& till);
    /// The name is for people.
    void start(const QString& name);
    /// Of itself every few seconds: what was not heard.
    void look();

private:
    void hear(const QJsonObject& message);
    void hearDocument(const sale::StoredDocument& document, const QJsonArray& answers);
    void sayDocument(const sale::StoredDocument& document);
    qint64 order(const RackTill& till, const QJsonObject& content);
    void obey(const rackboard::Order& order);
    void dropped(const rackboard::Order& order);
    bool isOwn(const QString& registerName) const;
    QStringList ownRegisters() const;
    void readOrders(sale::SqlConnection& connection);
    void followOrders();
    RackTill& add(const Till::Settings& settings, Till* own);
    void tick();
    /// At the other services.
    void lookAround();
    void tell();
    QList<rackboard::Entry> news();
    /// Whether the tables could be read.
    bool read();
    void lookForRegisters();
    /// Whether the table could be read.
    bool noteSilences();
    void noteLosses(bool isKnown);
    void giveUpLost();
    void take(const ToldRegister& told);

    Api& m_api;
    sale::DocumentStore& m_store;
    const std::chrono::seconds m_longestSilence;
    PeerLine m_line;
    LossWatch m_losses;
    OpenSweep m_sweep;
    QString m_name;
    std::map<QString, std::unique_ptr<RackTill>> m_tills;
    /// Of registers of this service: what the others know, without what grows by itself.
    QHash<QString, QJsonObject> m_told;
    /// That may have changed since.
    QSet<QString> m_changed;
    /// Documents that others wait for, and their registers.
    QHash<QString, QString> m_awaited;
    /// Documents that this service asks its registers about, and the numbers of the orders that said so.
    QHash<QString, QJsonArray> m_asking;
    rackboard::Reading m_read;
    QTimer m_timer;
    QTimer m_reading;
    QDeadlineTimer m_nextReading;
    int m_ticks = 0;
};

} // namespace frserver
