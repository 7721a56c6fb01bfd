#include "api/api.h"

#include "api/apiroute.h"
#include "api/documentresponse.h"
#include "api/documentview.h"
#include "api/journalproblem.h"
#include "api/place.h"
#include "documentanswer.h"
#include "findingsjson.h"
#include "http/problem.h"
#include "journalerror.h"

#include <QJsonArray>
#include <QLoggingCategory>

namespace frserver {

namespace {

Q_LOGGING_CATEGORY(apiLog, "frserver.api")

constexpr qsizetype keptEvents = 4000;
constexpr std::chrono::seconds pausingWait(130);
constexpr std::chrono::seconds lookAgainTime(1);
constexpr qint64 roomSeenMs = 1'000;

const QString pausedState = QStringLiteral("paused");

const QList<sale::DocumentState> openStates{
    sale::DocumentState::Queued, sale::DocumentState::Running, sale::DocumentState::Unknown};

/// Told as what is wrong with a document is: clients look for it there.
void requireQueryNames(const ApiRoute& route, const http::Request& request)
{
    QList<receipt::Finding> errors;
    QStringList seen;
    for (const auto& [name, value] : request.query) {
        const bool isKnown = name.isEmpty() || route.queryNames.contains(name);
        if (!isKnown || seen.contains(name))
            errors.append({receipt::Finding::Error, name, value,
                isKnown ? QStringLiteral("is asked for twice") : QStringLiteral("is not known")});
        if (!name.isEmpty())
            seen.append(name);
    }
    if (errors.isEmpty())
        return;
    const QString known = route.queryNames.isEmpty()
        ? QStringLiteral("nothing is asked for here")
        : QStringLiteral("there are ") + route.queryNames.join(QStringLiteral(", "));
    const receipt::Finding& first = errors.constFirst();
    throw http::Problem(400, QStringLiteral("%1 %2; %3.").arg(first.path, first.reason, known))
        .with(QStringLiteral("errors"), sale::findingsJson(errors))
        .with(QStringLiteral("warnings"), QJsonArray());
}

http::Handler handlerOf(Api& api, const ApiRoute& route)
{
    return [&api, route](const http::Request& request) -> http::Answer {
        requireQueryNames(route, request);
        try {
            return route.answer(api, request);
        } catch (const sale::JournalError& error) {
            return journalProblem(error);
        }
    };
}

/// Nobody else can work the register then.
bool isAtWork(const QJsonObject& view)
{
    const QString state = view.value(QStringLiteral("state")).toString();
    return state == QStringLiteral("ready") || state == QStringLiteral("making");
}

/// What changes by itself is no change.
QJsonObject withoutAges(QJsonObject view)
{
    const QStringList members = view.keys();
    for (const QString& member : members) {
        if (member.endsWith(QStringLiteral("Age")) || member == QStringLiteral("age")
            || member == QStringLiteral("exchanges"))
            view.remove(member);
    }
    return view;
}

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
    , m_pausing([this](const QString& name) { return http::Response::json(registerView(*till(name)), 202); },
          [](const QString&, bool) {})
{
    for (const sale::StoredDocument& document :
        store.find({.states = openStates, .withAttempts = false, .withBodies = false}))
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

void Api::add(Till& till)
{
    m_tills[till.settings().name] = &till;
}

void Api::add(Pool& pool)
{
    m_pools[pool.settings().name] = &pool;
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

Till* Api::till(const QString& name) const
{
    const auto found = m_tills.find(name);
    return found == m_tills.end() ? nullptr : found->second;
}

Till* Api::certainTill(const QString& name) const
{
    if (m_lookForRegisters && till(name) == nullptr)
        m_lookForRegisters();
    return till(name);
}

Pool* Api::pool(const QString& name) const
{
    const auto found = m_pools.find(name);
    return found == m_pools.end() ? nullptr : found->second;
}

QStringList Api::registersOf(const Pool& pool) const
{
    QStringList names = pool.settings().registers;
    const auto members = m_members.find(pool.settings().name);
    if (members == m_members.end())
        return names;
    for (const QString& name : members->second) {
        if (!names.contains(name))
            names.append(name);
    }
    return names;
}

void Api::noteMember(const QString& registerName, const QJsonObject& view)
{
    for (auto& [pool, names] : m_members)
        names.erase(registerName);
    const QJsonArray pools = view.value(QStringLiteral("pools")).toArray();
    for (const QJsonValue pool : pools)
        m_members[pool.toObject().value(QStringLiteral("name")).toString()].insert(registerName);
}

QJsonObject Api::queueView(const QString& registerName) const
{
    using sale::DocumentState;
    return {{QStringLiteral("queued"), m_open.count(registerName, DocumentState::Queued)},
        {QStringLiteral("running"), m_open.count(registerName, DocumentState::Running)},
        {QStringLiteral("unknown"), m_open.count(registerName, DocumentState::Unknown)},
        {QStringLiteral("oldest"), sale::momentJson(m_open.oldestQueued(registerName))}};
}

QStringList Api::missingRegisters() const
{
    // What frctl makes beside the service never waits.
    QStringList names = m_settings.isShared ? QStringList() : m_open.waitedFor();
    names.removeIf([this](const QString& place) {
        const std::optional<QString> poolName = Place::poolOf(place);
        return poolName ? pool(*poolName) != nullptr : till(place) != nullptr;
    });
    return names;
}

void Api::warnOfMissing() const
{
    for (const QString& name : missingRegisters())
        qCWarning(apiLog).noquote()
            << m_open.count(name, sale::DocumentState::Queued) << "documents wait for the register" << name
            << "that the configuration does not have: withdraw them, move them, or put its section back";
}

QJsonObject Api::registerView(const Till& till) const
{
    const QString& name = till.settings().name;
    QJsonObject view = till.view();
    view.insert(QStringLiteral("name"), name);
    view.insert(QStringLiteral("protocol"), receipt::protocolName(till.settings().protocol));
    if (!view.contains(QStringLiteral("pools")))
        view.insert(QStringLiteral("pools"), QJsonArray());
    view.insert(QStringLiteral("queue"), queueView(name));
    view.insert(QStringLiteral("lastReceipt"), lastReceipt(*this, name));
    return view;
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
    for (const auto& [name, till] : m_tills)
        requireJournal(*till);
    // Whoever asks often is not to wear out the disk.
    if (m_roomSeen.isValid() && !m_roomSeen.hasExpired(roomSeenMs))
        return;
    m_roomSeen.invalidate();
    m_store.requireRoom();
    m_roomSeen.start();
}

void Api::accepted(const sale::StoredDocument& document)
{
    documentChanged(document);
    wake(Place::of(document.request));
}

void Api::wake(const QString& place)
{
    const std::optional<QString> poolName = Place::poolOf(place);
    if (Pool* const all = poolName ? pool(*poolName) : nullptr)
        all->wake();
    else if (Till* const one = till(place))
        one->wake();
}

void Api::documentChanged(const QString& id)
{
    look(id, [this](const sale::StoredDocument& document) { documentChanged(document); });
}

void Api::documentChanged(const sale::StoredDocument& document)
{
    noteChange(document);
    if (m_ended && !isPending(document.state))
        m_ended();
    if (m_changed)
        m_changed(document);
}

void Api::lookAt(const QString& id)
{
    look(id, [this](const sale::StoredDocument& document) { noteChange(document); });
}

void Api::heard(const sale::StoredDocument& told)
{
    // Whoever waits is answered with all of it.
    if (m_waiters.areAny(told.request.id))
        lookAt(told.request.id);
    else
        noteChange(told);
    if (told.state == sale::DocumentState::Queued)
        wake(Place::of(told.request));
}

void Api::look(const QString& id, const std::function<void(const sale::StoredDocument&)>& found)
{
    try {
        if (const std::optional<sale::StoredDocument> document = m_store.findId(id))
            found(*document);
    } catch (const sale::JournalError& error) {
        qCWarning(apiLog).noquote() << error.what();
        m_missed.append(id);
        m_lookAgain.start(lookAgainTime);
    }
}

void Api::noteChange(const sale::StoredDocument& document)
{
    const QString& id = document.request.id;
    if (m_open.note(document))
        tell(document);
    if (isPending(document.state)) {
        // It may have been moved.
        if (m_waiters.areAny(id))
            setAwaited(id, Place::of(document.request));
        return;
    }
    // Also that it is still unknown after it was asked about.
    if (m_waiters.areAny(id))
        m_waiters.answer(id, documentResponse(*this, document));
}

void Api::setAwaited(const QString& id, const QString& place)
{
    const QString before = m_awaitedAt.take(id);
    if (!place.isEmpty())
        m_awaitedAt.insert(id, place);
    if (before == place)
        return;
    setAwaitedAt(before, id, false);
    setAwaitedAt(place, id, true);
}

void Api::setAwaitedAt(const QString& place, const QString& id, bool isAwaited)
{
    const std::optional<QString> poolName = Place::poolOf(place);
    if (Pool* const all = poolName ? pool(*poolName) : nullptr)
        all->setAwaited(id, isAwaited);
    else if (Till* const one = till(place))
        one->setAwaited(id, isAwaited);
}

void Api::tell(const sale::StoredDocument& document)
{
    m_events.publish("document",
        {{QStringLiteral("id"), document.request.id},
            {QStringLiteral("register"), document.request.registerName},
            {QStringLiteral("pool"), sale::textOrNull(document.request.pool)},
            {QStringLiteral("kind"), document.request.kind},
            {QStringLiteral("state"), sale::stateName(document.state)},
            {QStringLiteral("reason"), sale::textOrNull(sale::reasonName(document.reason))},
            {QStringLiteral("documentNumber"), sale::documentNumberJson(document.documentNumber)}});
}

void Api::registerChanged(const QString& name)
{
    const Till* const changed = till(name);
    if (changed == nullptr)
        return;
    const QJsonObject view = withoutAges(changed->view());
    const QJsonObject before = std::exchange(m_told[name], view);
    if (before == view)
        return;
    if (m_registerChanged && changed->isHere())
        m_registerChanged(name);
    noteMember(name, view);
    QJsonObject data = view;
    // Not for everybody who may use the register.
    data.remove(QStringLiteral("document"));
    data.insert(QStringLiteral("register"), name);
    m_events.publish("register", data);
    if (view.value(QStringLiteral("state")) == pausedState)
        m_pausing.answer(name, http::Response::json(registerView(*changed)));
    if (isAtWork(view) && !isAtWork(before))
        lookAtOpen(name);
}

/// Others may have ended them while the register was theirs: frctl, or a worker of a run before, which was
/// still at its document.
void Api::lookAtOpen(const QString& registerName)
{
    try {
        const QList<sale::StoredDocument> open
            = m_store.find({.states = openStates, .registerName = registerName, .withAttempts = false});
        for (const QString& id : m_open.outdated(registerName, open))
            documentChanged(id);
    } catch (const sale::JournalError& error) {
        qCWarning(apiLog).noquote() << error.what();
    }
}

http::Answer Api::whenPaused(const Till& till, std::optional<std::chrono::seconds> wait)
{
    const QJsonObject view = registerView(till);
    const std::chrono::seconds time = wait.value_or(pausingWait);
    if (view.value(QStringLiteral("state")) == pausedState)
        return http::Response::json(view);
    if (time == std::chrono::seconds(0))
        return http::Response::json(view, 202);
    return m_pausing.wait(till.settings().name, time);
}

http::Response Api::late(const QString& id) const
{
    try {
        const std::optional<sale::StoredDocument> document = m_store.findId(id);
        return document ? documentResponse(*this, *document) : http::Problem(404).response();
    } catch (const sale::JournalError& error) {
        return journalProblem(error);
    }
}

void Api::stop()
{
    m_isStopping = true;
    m_waiters.release();
    m_pausing.release();
}

} // namespace frserver
