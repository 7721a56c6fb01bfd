#include "rack/rack.h"

#include "rack/racklog.h"

#include "journalerror.h"

#include <algorithm>
#include <utility>

namespace frserver {

Q_LOGGING_CATEGORY(rackLog, "frserver.rack")

namespace {

constexpr int lookMs = 1'000;

} // namespace

Rack::Rack(const QList<RegisterSettings>& registers, sale::DocumentStore& store,
    const WorkerFactory& createWorker, const RegisterAgent::Options& options)
    : m_store(store)
    , m_ownership(options.ownership)
    , m_glance(options.glance)
{
    for (const RegisterSettings& settings : registers) {
        auto& agent = m_agents[settings.name];
        agent = std::make_unique<RegisterAgent>(settings, store, createWorker(), options);
        connect(agent.get(), &RegisterAgent::documentChanged, this, &Rack::documentChanged);
        connect(agent.get(), &RegisterAgent::changed, this,
            [this, name = settings.name] { Q_EMIT registerChanged(name); });
        // Whoever hears of it may end the event loop, and not in the middle of an agent's work.
        connect(agent.get(), &RegisterAgent::stopped, this, &Rack::finish, Qt::QueuedConnection);
    }
    m_timer.setInterval(lookMs);
    connect(&m_timer, &QTimer::timeout, this, &Rack::look);
}

void Rack::start()
{
    m_timer.start();
    m_ownership->look();
    for (const auto& [name, agent] : m_agents)
        agent->start();
}

void Rack::stop()
{
    // A signal that comes twice, or before the start.
    m_timer.start();
    for (const auto& [name, agent] : m_agents)
        agent->stop();
    // Where there are none.
    QMetaObject::invokeMethod(this, &Rack::finish, Qt::QueuedConnection);
}

void Rack::finish()
{
    const bool isDone = std::all_of(
        m_agents.cbegin(), m_agents.cend(), [](const auto& entry) { return entry.second->isStopped(); });
    if (!isDone || !m_timer.isActive())
        return;
    m_timer.stop();
    Q_EMIT stopped();
}

void Rack::look()
{
    // First: what the database keeps waiting later must not cost the registers.
    m_ownership->look();
    const bool isExpired = attempt([this] { expire(); });
    if (attempt([this] { glance(); }) && isExpired)
        m_fault.clear();
    for (const auto& [name, agent] : m_agents)
        agent->look();
    m_glance->close();
}

/// What fails is told once: it is looked each second.
bool Rack::attempt(const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (const sale::JournalError& error) {
        const QString fault = QString::fromUtf8(error.what());
        if (fault != std::exchange(m_fault, fault))
            qCWarning(rackLog).noquote() << fault;
        return false;
    }
}

/// Where it fails each register finds out by itself.
void Rack::glance()
{
    QStringList names;
    for (const auto& [name, agent] : m_agents)
        names.append(name);
    const QStringList waiting = m_store.waitingFor(names);
    m_glance->open(
        QSet<QString>(names.cbegin(), names.cend()) - QSet<QString>(waiting.cbegin(), waiting.cend()));
}

/// Where it fails nothing of them is begun all the same: that is decided anew where it would be.
void Rack::expire()
{
    for (const QString& id : m_store.expire())
        Q_EMIT documentChanged(id);
}

} // namespace frserver
