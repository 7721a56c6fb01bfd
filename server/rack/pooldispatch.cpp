#include "rack/pooldispatch.h"

#include "rack/rack.h"
#include "rack/racklog.h"

#include "documentanswer.h"
#include "journalerror.h"

#include <QJsonObject>

#include <algorithm>

namespace frserver {

namespace {

constexpr int poolLookMs = 1'000;
/// A document that no worker is at by then goes to another register.
constexpr std::chrono::seconds claimTime(30);
/// Of those that somebody waits for, so many are asked for before the queue is.
constexpr int mostAwaited = 8;

/// One that registers gave back so often may be to blame, and lets others pass for 4, 8 ... 60 s.
constexpr int mostReturns = 2;
constexpr int longestDeferral = 60;
constexpr qint64 forgottenMs = 600'000;

} // namespace

PoolDispatch::PoolDispatch(
    const QList<PoolSettings>& pools, const Rack& rack, sale::DocumentPools& store, const AgentClock& clock)
    : m_pools(pools)
    , m_rack(rack)
    , m_store(store)
    , m_clock(clock)
{
    for (const auto& [name, agent] : rack.agents()) {
        const auto isOfIt = [&registerName = name](
                                const PoolSettings& pool) { return pool.registers.contains(registerName); };
        if (std::none_of(m_pools.cbegin(), m_pools.cend(), isOfIt))
            continue;
        m_agents[name] = agent.get();
        connect(agent.get(), &RegisterAgent::changed, this, [this, of = name] { noteReadiness(of); });
        // Not in the middle of its work.
        connect(
            agent.get(), &RegisterAgent::claimGivenUp, this,
            [this, of = agent.get()](bool mayBeToBlame) { giveBack(*of, mayBeToBlame); },
            Qt::QueuedConnection);
    }
    m_timer.setInterval(poolLookMs);
    connect(&m_timer, &QTimer::timeout, this, &PoolDispatch::look);
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &PoolDispatch::claim);
}

void PoolDispatch::start()
{
    if (!m_pools.isEmpty())
        m_timer.start();
}

void PoolDispatch::stop()
{
    m_timer.stop();
    m_soon.stop();
    m_agents.clear();
}

void PoolDispatch::wake()
{
    if (!m_agents.empty())
        m_soon.start(0);
}

void PoolDispatch::noteReadiness(const QString& registerName)
{
    const auto found = m_agents.find(registerName);
    const bool isReady
        = found != m_agents.end() && found->second->readiness() != RegisterAgent::Readiness::Nothing;
    if (!isReady)
        m_ready.remove(registerName);
    else if (!m_ready.contains(registerName)) {
        m_ready.insert(registerName);
        wake();
    }
}

void PoolDispatch::setAwaited(const QString& pool, const QString& id, bool isAwaited)
{
    QStringList& awaited = m_awaited[pool];
    awaited.removeAll(id);
    if (isAwaited)
        awaited.append(id);
}

void PoolDispatch::look()
{
    giveBackStale();
    claim();
}

void PoolDispatch::giveBackStale()
{
    // What a worker prepares for long, and has not begun, is in good hands: one that hangs is killed.
    QStringList underWay;
    QString owner;
    for (const auto& [name, agent] : m_rack.agents()) {
        if (const QString id = agent->underWay(); !id.isEmpty())
            underWay.append(id);
        owner = agent->lease().value(QStringLiteral("owner")).toString();
    }
    try {
        const QStringList ids = m_store.giveBackStale(claimTime, underWay, owner);
        for (const QString& id : ids)
            Q_EMIT documentChanged(id);
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << error.what();
    }
}

void PoolDispatch::giveBack(const RegisterAgent& agent, bool mayBeToBlame)
{
    try {
        const QStringList ids = m_store.giveBack(agent.name(), agent.lease());
        for (const QString& id : ids) {
            if (mayBeToBlame)
                noteReturn(id);
            Q_EMIT documentChanged(id);
        }
        wake();
    } catch (const sale::JournalError& error) {
        // It goes back when its time is over.
        qCWarning(rackLog).noquote() << error.what();
    }
}

void PoolDispatch::noteReturn(const QString& id)
{
    const qint64 now = m_clock.steady();
    m_returns.removeIf([now](const auto& entry) { return entry.value().until + forgottenMs < now; });
    Return& known = m_returns[id];
    ++known.times;
    const int seconds
        = known.times < mostReturns ? 0 : std::min(longestDeferral, 1 << std::min(known.times, 6));
    known.until = now + seconds * 1000LL;
}

QStringList PoolDispatch::deferred() const
{
    QStringList ids;
    for (auto entry = m_returns.cbegin(); entry != m_returns.cend(); ++entry) {
        if (entry->until > m_clock.steady())
            ids.append(entry.key());
    }
    return ids;
}

void PoolDispatch::claim()
{
    // Registers for which nothing waits, by what they may take.
    QSet<QString> exhausted;
    const QList<Free> all = freeOnes();
    const QStringList later = deferred();
    for (const Free& free : all) {
        const QString kind = free.pools.join(QLatin1Char(',')) + (free.isPaperless ? u'!' : u' ');
        // Whoever heard of the one before may have given it something.
        if (exhausted.contains(kind) || !isFree(free))
            continue;
        try {
            const std::optional<sale::StoredDocument> document = claimFor(free, later);
            if (!document) {
                exhausted.insert(kind);
                continue;
            }
            free.agent->makeClaimed(*document);
            Q_EMIT documentClaimed(*document);
        } catch (const sale::JournalError& error) {
            qCWarning(rackLog).noquote() << error.what();
            return;
        }
    }
}

bool PoolDispatch::isFree(const Free& free)
{
    using Readiness = RegisterAgent::Readiness;
    return free.agent->readiness() == (free.isPaperless ? Readiness::Paperless : Readiness::Anything);
}

QList<PoolDispatch::Free> PoolDispatch::freeOnes() const
{
    QList<Free> free;
    for (const auto& [name, agent] : m_agents) {
        const RegisterAgent::Readiness readiness = agent->readiness();
        if (readiness == RegisterAgent::Readiness::Nothing)
            continue;
        const DriveLeft left = driveOf(*agent);
        const QStringList pools = poolsFor(*agent, left);
        if (!pools.isEmpty())
            free.append({agent, pools, readiness == RegisterAgent::Readiness::Paperless, left.rank()});
    }
    std::stable_sort(
        free.begin(), free.end(), [](const Free& left, const Free& right) { return left.rank > right.rank; });
    return free;
}

QStringList PoolDispatch::poolsFor(const RegisterAgent& agent, const DriveLeft& left) const
{
    QStringList names;
    for (const PoolSettings& pool : m_pools) {
        if (pool.registers.contains(agent.name()) && absence(pool, agent, left).isEmpty())
            names.append(pool.name);
    }
    return names;
}

QString PoolDispatch::absence(const PoolSettings& pool, const RegisterAgent& agent, const DriveLeft& left)
{
    const QJsonValue told = agent.identity().value(QStringLiteral("taxSystems"));
    const QJsonArray systems = told.toArray();
    const auto isMissing = [&](const QString& system) { return !systems.contains(system); };
    if (told.isArray() && std::any_of(pool.taxSystems.cbegin(), pool.taxSystems.cend(), isMissing))
        return QStringLiteral("taxSystems");
    return left.shortOf(pool.drain);
}

DriveLeft PoolDispatch::driveOf(const RegisterAgent& agent) const
{
    return DriveLeft::of(agent.toldCondition(), agent.settings().driveCapacity, m_clock.now().date());
}

std::optional<sale::StoredDocument> PoolDispatch::claimFor(const Free& free, const QStringList& later)
{
    if (std::optional<sale::StoredDocument> awaited = claimAwaited(free, later))
        return awaited;
    return m_store.claim({free.agent->name(), free.pools, free.isPaperless, later});
}

std::optional<sale::StoredDocument> PoolDispatch::claimAwaited(const Free& free, const QStringList& later)
{
    if (free.isPaperless)
        return std::nullopt;
    int asked = 0;
    for (const QString& pool : free.pools) {
        QStringList& awaited = m_awaited[pool];
        for (qsizetype place = 0; place < awaited.size() && asked < mostAwaited;) {
            if (later.contains(awaited.at(place))) {
                ++place;
                continue;
            }
            ++asked;
            // Whatever comes of it: it is claimed now, or was before.
            const QString id = awaited.takeAt(place);
            if (std::optional<sale::StoredDocument> document
                = m_store.claim({free.agent->name(), {pool}, false, {}, id}))
                return document;
        }
    }
    return std::nullopt;
}

QJsonArray PoolDispatch::poolsOf(const QString& registerName) const
{
    QJsonArray pools;
    const auto found = m_agents.find(registerName);
    if (found == m_agents.end())
        return pools;
    const DriveLeft left = driveOf(*found->second);
    for (const PoolSettings& pool : m_pools) {
        if (!pool.registers.contains(registerName))
            continue;
        const QString why = absence(pool, *found->second, left);
        pools.append(QJsonObject{{QStringLiteral("name"), pool.name},
            {QStringLiteral("absent"), why.isEmpty() ? QJsonValue() : QJsonValue(why)},
            {QStringLiteral("daysLeft"), sale::numberJson(left.days)},
            {QStringLiteral("documentsLeft"), sale::numberJson(left.documents)}});
    }
    return pools;
}

} // namespace frserver
