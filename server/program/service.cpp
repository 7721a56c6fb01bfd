#include "program/service.h"

#include "driverplugin.h"
#include "journalplace.h"
#include "portname.h"
#include "postgres/openstore.h"
#include "rack/leasedownership.h"
#include "rack/soleownership.h"
#include "rack/workerprocess.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSysInfo>
#include <QUrl>

namespace frserver {

namespace {

/// Another program may have the journal for a moment; whoever asks is not to wait for longer.
constexpr int patienceMs = 3'000;
/// A busy register may hold a document's last exchange for 100 s.
constexpr std::chrono::seconds longestDocument(130);

/// The program that runs, also when an update has put another one in its place: they would not understand
/// each other.
std::unique_ptr<Worker> createWorker()
{
    return std::make_unique<WorkerProcess>(QStringLiteral("/proc/self/exe"));
}

/// A process whose file was replaced does not know any more where it stood.
QStringList pluginPlaces(const ServiceSettings& settings)
{
    return settings.plugins.isEmpty() ? devices::usualPluginPlaces() : settings.plugins;
}

QList<RegisterSettings> registersOf(const Configuration& configuration)
{
    QList<RegisterSettings> registers = configuration.registers;
    for (RegisterSettings& settings : registers)
        settings.plugins = pluginPlaces(configuration.service);
    return registers;
}

/// One that shares the journal with no other machine has its registers for itself.
std::shared_ptr<Ownership> ownershipOf(const Configuration& configuration, const QString& journal)
{
    if (!sale::isShared(journal))
        return std::make_shared<SoleOwnership>();
    QList<sale::RegisterLeases::Wish> wishes;
    for (const RegisterSettings& settings : configuration.registers)
        wishes.append({settings.name, !devices::isTcpName(settings.port)});
    return std::make_shared<LeasedOwnership>(
        sale::PostgresPlace::of(journal), wishes, std::chrono::seconds(configuration.service.leaseSeconds));
}

Api::Settings apiSettings(const ServiceSettings& settings, const QString& journal)
{
    return {.queueLimit = settings.queueLimit,
        .version = QCoreApplication::applicationVersion().toUtf8(),
        .isShared = sale::isShared(journal)};
}

Till::Settings tillSettings(const RegisterSettings& settings, int queueLimit)
{
    return {settings.name, settings.protocol, settings.timeZone, settings.startBefore, settings.hasCashier(),
        settings.cashier, settings.cashierInn, queueLimit};
}

} // namespace

Service::Service(const Configuration& configuration, const QString& journal)
    : m_certificate(configuration.service.tlsCertificate)
    , m_key(configuration.service.tlsKey)
    , m_store(sale::openStore(journal, patienceMs))
    , m_owners(journal, patienceMs)
    , m_outbox(journal, patienceMs)
    , m_kept(journal, patienceMs)
    , m_tokens(tokenFile(configuration.service, journal))
    , m_rack(registersOf(configuration), *m_store, createWorker,
          {.journal = journal, .ownership = ownershipOf(configuration, journal), .kept = &m_kept})
    , m_dispatch(configuration.pools, m_rack, *m_store)
    , m_pictures({.plugins = pluginPlaces(configuration.service)})
    , m_api(*m_store, m_owners, apiSettings(configuration.service, journal))
    , m_server(m_api.site())
{
    m_api.setPainter(m_pictures);
    m_store->requireHere();
    if (sale::isShared(journal))
        m_peers = std::make_unique<Peers>(sale::PostgresPlace::of(journal), m_api, *m_store,
            std::chrono::seconds(configuration.service.leaseSeconds));
    for (const auto& [name, agent] : m_rack.agents())
        add(*agent);
    for (const PoolSettings& settings : configuration.pools)
        add(settings);
    m_api.warnOfMissing();
    QObject::connect(
        &m_rack, &Rack::documentChanged, &m_rack, [this](const QString& id) { m_api.documentChanged(id); });
    QObject::connect(&m_dispatch, &PoolDispatch::documentClaimed, &m_dispatch,
        [this](const sale::StoredDocument& document) { m_api.documentChanged(document); });
    QObject::connect(&m_dispatch, &PoolDispatch::documentChanged, &m_dispatch,
        [this](const QString& id) { m_api.documentChanged(id); });
    QObject::connect(&m_rack, &Rack::registerChanged, &m_rack,
        [this](const QString& name) { m_api.registerChanged(name); });
    startWebhook(configuration.service);
}

QString Service::tokenFile(const ServiceSettings& settings, const QString& journal)
{
    if (!settings.tokens.isEmpty())
        return settings.tokens;
    const QString folder
        = sale::isShared(journal) ? sale::machineFolder() : QFileInfo(journal).absolutePath();
    return folder + QStringLiteral("/frserver.tokens");
}

void Service::add(RegisterAgent& agent)
{
    m_tills.push_back(std::make_unique<AgentTill>(
        tillSettings(agent.settings(), m_api.settings().queueLimit), agent, m_dispatch));
    if (m_peers)
        m_peers->add(*m_tills.back());
    else
        m_api.add(*m_tills.back());
}

void Service::add(const PoolSettings& settings)
{
    m_pools.push_back(
        std::make_unique<DispatchPool>(Pool::Settings{settings.name, settings.registers, settings.inn,
                                           settings.taxSystems, settings.startBefore},
            m_dispatch));
    m_api.add(*m_pools.back());
}

void Service::startWebhook(const ServiceSettings& settings)
{
    if (settings.webhookUrl.isEmpty())
        return m_outbox.close();
    m_outbox.open();
    m_webhook = std::make_unique<Webhook>(
        m_outbox, Webhook::Settings{QUrl(settings.webhookUrl), settings.webhookSecret});
    m_api.onEnd([this] { m_webhook->wake(); });
    m_webhook->wake();
}

QString Service::readTokens()
{
    try {
        const bool isThere = m_tokens.exists();
        // Where others come, or there were tokens before, nobody is let in for want of the file.
        m_areTokensWanted = m_areTokensWanted || m_isOpen || isThere;
        m_api.setTokens(m_areTokensWanted, m_tokens.read());
        return isThere || !m_areTokensWanted
            ? QString()
            : QStringLiteral("%1 is gone: nobody is let in").arg(m_tokens.fileName());
    } catch (const TokenError& error) {
        m_api.setTokens(true, {});
        return QString::fromUtf8(error.what());
    }
}

void Service::readIdentity()
{
    if (m_certificate.isEmpty())
        return;
    const auto identity = std::make_shared<http::TlsIdentity>(m_certificate, m_key);
    m_api.site().gate.hostNames = identity->hostNames();
    m_server.setIdentity(identity);
}

void Service::start(const ListenAddress& listen)
{
    m_isOpen = !listen.isLoopback();
    m_server.listen(listen.address, listen.port);
    m_rack.start();
    m_dispatch.start();
    if (m_peers)
        m_peers->start(QSysInfo::machineHostName() + QLatin1Char(':') + QString::number(QUrl(url()).port()));
}

void Service::stop(const std::function<void()>& stopped)
{
    m_api.stop();
    QObject::connect(&m_rack, &Rack::stopped, &m_patience, stopped);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, stopped);
    m_patience.setSingleShot(true);
    m_patience.start(longestDocument);
    m_dispatch.stop();
    m_rack.stop();
}

} // namespace frserver
