#pragma once

#include "configuration/poolsettings.h"
#include "documentpools.h"
#include "rack/agentclock.h"
#include "rack/driveleft.h"
#include "rack/registeragent.h"

#include <QHash>
#include <QJsonArray>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <map>
#include <optional>

namespace frserver {

class Rack;

/// Gives what waits in pools to registers of this service that are free, one document at a time, and takes
/// back what they cannot begin. Services that share a database do so side by side: the store sees to it that
/// each document has one register.
class PoolDispatch : public QObject
{
    Q_OBJECT

public:
    /// Rack and store must outlive it.
    PoolDispatch(const QList<PoolSettings>& pools, const Rack& rack, sale::DocumentPools& store,
        const AgentClock& clock = AgentClock::system());

    void start();
    /// Nothing is claimed any longer.
    void stop();
    /// Something was queued.
    void wake();
    /// Somebody waits for the document, which goes before those that nobody waits for.
    void setAwaited(const QString& pool, const QString& id, bool isAwaited);
    /// To be called every second or so.
    void look();

    /// Of a register: each pool that it serves, with "name", "absent" (why it takes nothing from the pool,
    /// though it may work: "driveDays", "driveDocuments", "taxSystems"; null otherwise), "daysLeft" and
    /// "documentsLeft" of its drive.
    QJsonArray poolsOf(const QString& registerName) const;

Q_SIGNALS:
    void documentClaimed(const sale::StoredDocument& document);
    /// It has no register any more.
    void documentChanged(const QString& id);

private:
    /// A register that is free, and what it may take.
    struct Free
    {
        RegisterAgent* agent = nullptr;
        QStringList pools;
        bool isPaperless = false;
        qint64 rank = 0;
    };

    /// A document that was given back, and when it is tried again.
    struct Return
    {
        int times = 0;
        qint64 until = 0;
    };

    void claim();
    void giveBackStale();
    void giveBack(const RegisterAgent& agent, bool mayBeToBlame);
    void noteReadiness(const QString& registerName);
    static bool isFree(const Free& free);
    QList<Free> freeOnes() const;
    QStringList poolsFor(const RegisterAgent& agent, const DriveLeft& left) const;
    static QString absence(const PoolSettings& pool, const RegisterAgent& agent, const DriveLeft& left);
    /// None of those that are tried later.
    std::optional<sale::StoredDocument> claimFor(const Free& free, const QStringList& later);
    std::optional<sale::StoredDocument> claimAwaited(const Free& free, const QStringList& later);
    void noteReturn(const QString& id);
    QStringList deferred() const;
    DriveLeft driveOf(const RegisterAgent& agent) const;

    const QList<PoolSettings> m_pools;
    const Rack& m_rack;
    sale::DocumentPools& m_store;
    const AgentClock m_clock;
    /// Those that serve a pool.
    std::map<QString, RegisterAgent*> m_agents;
    /// By pool; those that are believed to have no register.
    QHash<QString, QStringList> m_awaited;
    QHash<QString, Return> m_returns;
    QSet<QString> m_ready;
    QTimer m_timer;
    QTimer m_soon;
};

} // namespace frserver
