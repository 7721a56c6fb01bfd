#include "api/api.h"

#include "api/apilog.h"
#include "api/apiroute.h"

namespace frserver {

Q_LOGGING_CATEGORY(apiLog, "frserver.api")

namespace {

constexpr qsizetype keptEvents = 4000;
constexpr qint64 roomSeenMs = 1'000;

} // namespace

Api::Api(sale::SqlStore& store, Owners& owners, const Settings& settings)
    : m_store(store)
    , m_owners(owners)
    , m_settings(settings)
    , m_events(keptEvents)
    , m_waiters([this](const QString& id) { return late(id); },
          [this](const QString& id, bool isAwaited) {
              setAwaited(id, isAwaited ? m_open.placeOf(id) : QString());
          })
    , m_pausing([this](const QString& pause) { return notPaused(pause); }, [](const QString&, bool) {})
{
    for (const sale::StoredDocument& document :
        store.find({.states = OpenList::states(), .withAttempts = false, .withBodies = false}))
        m_open.takeOver(document);
    m_site.files = http::StaticFiles(QStringLiteral(":/page"));
    m_lookAgain.setSingleShot(true);
    QObject::connect(&m_lookAgain, &QTimer::timeout, &m_lookAgain, [this] {
        const QStringList missed = std::exchange(m_missed, {});
        for (const QString& id : missed)
            documentChanged(id);
    });
    addRoutes();
}

void Api::addRoutes()
{
    for (const auto* const routes : {&documentRoutes(), &documentListRoutes(), &registerRoutes(),
             &poolRoutes(), &checkRoutes(), &pictureRoutes(), &eventRoutes(), &callerRoutes()}) {
        for (const ApiRoute& route : *routes)
            m_site.router.add(
                route.method, QStringLiteral("/v1") + route.pattern, handlerOf(*this, route), route.access);
    }
    for (const ApiRoute& route : healthRoutes())
        m_site.router.add(route.method, route.pattern, handlerOf(*this, route), route.access);
}

void Api::setTokens(bool areWanted, const QList<TokenEntry>& entries)
{
    m_site.tokens.clear();
    for (const TokenEntry& entry : entries)
        m_site.tokens.add(entry.hash, {entry.name, entry.role, entry.registers});
    // No token has this for its hash.
    if (areWanted && entries.isEmpty())
        m_site.tokens.add("-", {});
}

Till* Api::certainTill(const QString& name) const
{
    if (m_lookForRegisters && till(name) == nullptr)
        m_lookForRegisters();
    return till(name);
}

void Api::requireJournal(const Till& till) const
{
    if (!till.isHere())
        return;
    const QJsonObject view = till.view();
    if (view.value(QStringLiteral("waiting")).toString() == QStringLiteral("journal"))
        throw sale::JournalError(view.value(QStringLiteral("waitingText")).toString());
}

void Api::requireJournal()
{
    for (const auto& [name, till] : tills())
        requireJournal(*till);
    // Whoever asks often is not to wear out the disk.
    if (m_roomSeen.isValid() && !m_roomSeen.hasExpired(roomSeenMs))
        return;
    m_roomSeen.invalidate();
    m_store.requireRoom();
    m_roomSeen.start();
}

void Api::stop()
{
    m_isStopping = true;
    m_waiters.release();
    m_pausing.release();
}

} // namespace frserver
