#include "peers/peers.h"

#include "peers/peerlog.h"
#include "peers/saiddocument.h"

#include "api/api.h"
#include "api/lastingview.h"
#include "journalerror.h"
#include "pendingsales.h"

#include <algorithm>

namespace frserver {

namespace {

constexpr std::chrono::seconds tickTime(1);
/// In ticks.
constexpr int lookTicks = 3;
/// All that is open is gone through then, mostly for nothing.
constexpr int sweepTicks = 2 * lookTicks;
/// A service that is there tells so each time it looks.
constexpr std::chrono::seconds leastSilence(2 * lookTicks);
/// What nobody watches, such as counts of exchanges, is told so often.
constexpr int tellAllTicks = 15;
/// In which what is to be read is collected.
constexpr std::chrono::milliseconds readPause(200);
/// Between two readings: of many registers some change at each moment, and all services read them.
constexpr std::chrono::milliseconds betweenReadings(1'000);

const QString documentName = QStringLiteral("document");
const QString registersName = QStringLiteral("registers");
const QString goneName = QStringLiteral("gone");
const QString ordersName = QStringLiteral("orders");
const QString answersName = QStringLiteral("answers");
const QString orderName = QStringLiteral("order");
const QString registerName = QStringLiteral("register");

} // namespace

Peers::Peers(const sale::PostgresPlace& place, Api& api, sale::DocumentStore& store,
    std::chrono::seconds lease, const LossWatch::Clock& clock)
    : m_api(api)
    , m_store(store)
    , m_longestSilence(std::max(lease, leastSilence))
    , m_line(place)
    , m_losses(m_longestSilence, clock)
    , m_sweep(api, store)
{
    connect(&m_line, &PeerLine::heard, this, &Peers::hear);
    connect(&m_timer, &QTimer::timeout, this, &Peers::tick);
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, [this] { read(); });
    m_api.onChange([this](const sale::StoredDocument& document) { sayDocument(document); });
    m_api.onRegisterChange([this](const QString& name) { m_changed.insert(name); });
    m_api.onMissingRegister([this] { lookForRegisters(); });
}

Peers::~Peers()
{
    m_api.onChange({});
    m_api.onRegisterChange({});
    m_api.onMissingRegister({});
    m_line.ask([this](sale::SqlConnection& connection) { rackboard::leave(connection, m_line.id()); });
    m_line.say({{registersName, goneName}});
    m_line.flush();
}

RackTill& Peers::add(const Till::Settings& settings, Till* own)
{
    std::unique_ptr<RackTill>& till = m_tills[settings.name];
    till = std::make_unique<RackTill>(
        settings, own,
        [this](const RackTill& ordered, const QJsonObject& content) { return order(ordered, content); },
        [this] { followOrders(); }, m_longestSilence);
    m_api.add(*till);
    return *till;
}

void Peers::add(Till& till)
{
    add(till.settings(), &till);
    m_changed.insert(till.settings().name);
}

void Peers::start(const QString& name)
{
    m_name = name;
    QStringList registers;
    for (const auto& [one, till] : m_tills) {
        till->setServiceName(name);
        registers.append(one);
    }
    m_line.ask([&](sale::SqlConnection& connection) {
        rackboard::tidy(connection);
        rackboard::forgetOthers(connection, name, registers);
    });
    look();
    tell();
    m_timer.start(tickTime);
}

void Peers::tick()
{
    ++m_ticks;
    if (m_ticks % sweepTicks == 0)
        look();
    else if (m_ticks % lookTicks == 0)
        lookAround();
    if (m_ticks % tellAllTicks == 0) {
        for (const auto& [name, till] : m_tills)
            m_changed.insert(name);
    }
    tell();
}

void Peers::look()
{
    lookAround();
    m_sweep.begin();
}

void Peers::lookAround()
{
    m_line.ask([this](sale::SqlConnection& connection) { rackboard::beat(connection, m_line.id(), m_name); });
    const bool areOthersKnown = read();
    noteLosses(noteSilences() && areOthersKnown);
    giveUpLost();
}

/// One that somebody has by now is not lost, also when that one has told of nothing yet.
void Peers::noteLosses(bool isKnown)
{
    QStringList lost;
    for (const auto& [name, till] : m_tills) {
        if (till->isLost())
            lost.append(name);
    }
    const auto leaveOutLeased = [&lost](const sale::SqlConnection& connection) {
        for (const QString& name : sale::RegisterLeases::leased(connection))
            lost.removeAll(name);
    };
    if (isKnown && (lost.isEmpty() || m_line.ask(leaveOutLeased)))
        m_losses.look(lost);
    else
        m_losses.forget();
}

/// Whoever works a register gives up itself what it cannot ask about.
void Peers::giveUpLost()
{
    for (const auto& [name, till] : m_tills) {
        if (!m_losses.isLostFor(name, sale::longestUnreached)
            || m_api.openDocuments().count(name, sale::DocumentState::Running) == 0)
            continue;
        try {
            for (const QString& id : sale::giveUpPendingSales(m_store, name))
                m_api.documentChanged(id);
        } catch (const sale::JournalError& error) {
            qCWarning(peerLog).noquote() << name << error.what();
        }
    }
}

/// What the others do not know of this service's registers.
QList<rackboard::Entry> Peers::news()
{
    QList<rackboard::Entry> entries;
    for (const QString& name : std::as_const(m_changed)) {
        const RackTill& till = *m_tills.at(name);
        if (!till.isOwn()) {
            m_told.remove(name);
            continue;
        }
        const QJsonObject view = till.view();
        const QJsonObject lasting = lastingView(view);
        if (lasting == m_told.value(name))
            continue;
        m_told.insert(name, lasting);
        entries.append({till.settings(), view, till.followed()});
    }
    return entries;
}

void Peers::tell()
{
    const QList<rackboard::Entry> entries = news();
    const bool isTold = m_line.ask([this, &entries](sale::SqlConnection& connection) {
        rackboard::tell(connection, m_line.id(), entries);
    });
    if (isTold) {
        m_changed.clear();
        if (!entries.isEmpty())
            m_line.say({{registersName, true}});
        return;
    }
    // All of it again when the database answers.
    for (const rackboard::Entry& entry : entries)
        m_told.remove(entry.settings.name);
}

bool Peers::read()
{
    m_nextReading.setRemainingTime(betweenReadings);
    return m_line.ask([this](sale::SqlConnection& connection) {
        for (const ToldRegister& told : rackboard::registers(connection, m_line.id(), m_read))
            take(told);
        readOrders(connection);
    });
}

/// It may have begun without the database, or not have read yet what another one told a moment ago.
void Peers::lookForRegisters()
{
    const size_t before = m_tills.size();
    if (!read())
        throw sale::JournalError(
            QStringLiteral("Which registers other services have could not be read from the database"));
    if (m_tills.size() > before)
        noteSilences();
}

/// Also that nothing more is heard of one.
bool Peers::noteSilences()
{
    const bool isRead = m_line.ask([this](sale::SqlConnection& connection) {
        const QHash<QString, double> silences = rackboard::silences(connection);
        for (const auto& [name, till] : m_tills) {
            const auto silence = silences.constFind(till->service());
            if (!till->service().isEmpty())
                till->noteSilence(silence == silences.cend() ? std::nullopt : std::optional(*silence));
        }
    });
    for (const auto& [name, till] : m_tills) {
        if (till->takeReachability())
            m_api.registerChanged(name);
    }
    return isRead;
}

void Peers::take(const ToldRegister& told)
{
    const auto known = m_tills.find(told.settings.name);
    RackTill& till = known == m_tills.end() ? add(told.settings, nullptr) : *known->second;
    till.tell(told);
    // It has told this just now.
    till.noteSilence(told.age);
    m_api.registerChanged(told.settings.name);
}

qint64 Peers::order(const RackTill& till, const QJsonObject& content)
{
    if (rackorder::isPassing(content)) {
        m_line.say({{orderName, content}, {registerName, till.settings().name}});
        return 0;
    }
    if (const QString id = rackorder::settledId(content); !id.isEmpty() && !till.isReachable()) {
        // Whoever asks wants to be told later.
        QTimer::singleShot(0, this, [this, id] { m_api.lookAt(id); });
        return 0;
    }
    const QString& name = till.settings().name;
    const qint64 number = rackboard::order(m_line.connection(), m_line.id(), {name, content});
    m_line.say({{ordersName, name}});
    return number;
}

void Peers::hear(const QJsonObject& message)
{
    if (const QJsonObject document = message.value(documentName).toObject(); !document.isEmpty())
        hearDocument(documentSaid(document), message.value(answersName).toArray());
    if (message.contains(orderName))
        obey({message.value(registerName).toString(), message.value(orderName).toObject()});
    const bool areOrders = isOwn(message.value(ordersName).toString());
    // Of one that is gone, too.
    if (message.contains(registersName) && message.value(registersName) == goneName)
        noteSilences();
    if (areOrders)
        m_reading.start(0);
    else if (message.contains(registersName) && !m_reading.isActive())
        m_reading.start(static_cast<int>(std::max<qint64>(readPause.count(), m_nextReading.remainingTime())));
}

void Peers::hearDocument(const sale::StoredDocument& document, const QJsonArray& answers)
{
    if (const auto till = m_tills.find(document.request.registerName); till != m_tills.end())
        till->second->noteAnswer(document.request.id, answers);
    m_api.heard(document);
}

void Peers::sayDocument(const sale::StoredDocument& document)
{
    QJsonObject message{{documentName, saidDocument(document)}};
    if (const QJsonArray answered = m_asking.take(document.request.id); !answered.isEmpty())
        message.insert(answersName, answered);
    m_line.say(message);
    // The service of whoever waited for it may be gone.
    const QString awaitedAt = isFinal(document.state) ? m_awaited.take(document.request.id) : QString();
    if (const auto till = m_tills.find(awaitedAt); till != m_tills.end())
        till->second->setAwaited(document.request.id, false);
}

} // namespace frserver
