#include "host.h"

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "hostkilled.h"
#include "identifiedsale.h"
#include "receipt.h"
#include "violation.h"

#include <QSet>

#include <algorithm>
#include <string_view>

namespace {

constexpr Host::Rates hexRates{25, 250};
constexpr Host::Rates xmlRates{80, 250};
// Most of the day that a shift may last.
constexpr qint64 longestShift = 20LL * 60 * 60 * 1000;
constexpr int patience = 3;
// Of a thousand writings of the journal.
constexpr int journalKills = 2;
// Of a thousand exchanges. Behind a failed close a neighbour is what a verdict has to cope with.
constexpr int usualDeeds = 3;
constexpr int deedsBehindClose = 25;
// HEX: three reads, each bound by the ACK budget and the silence around it. XML: a silence, and a second one
// behind a piece of an answer.
constexpr qint64 hexBudget = 3LL * (50 * 2000 + 2 * 2000);
constexpr qint64 xmlBudget = 2LL * 15'000;

FrUser cashier()
{
    return {QStringLiteral("Иванова"), QStringLiteral("кассир"), QStringLiteral("771234567890")};
}

bool isNamed(const char* name, const char* other)
{
    return std::string_view(name) == other;
}

} // namespace

Host::Host(Rig& rig, sale::DocumentStore& journal, Report& report, const Setting& setting)
    : m_rig(rig)
    , m_setting(setting)
    , m_journal(journal, rig.line)
    , m_report(report)
{
    m_rig.line.setHazards(setting.hazards);
    m_rig.watch = [this](const char* name, const std::function<void()>& work) { call(name, work); };
    m_rig.line.setVisitor([this] { letNeighbourAct(); });
    sitDown();
}

void Host::sitDown()
{
    const sale::RegisterLine line(
        m_setting.protocol == Protocol::Hex ? receipt::Protocol::Hex : receipt::Protocol::Xml,
        m_setting.neighbour != Neighbour::Shared);
    m_desk.emplace(m_rig.driver(), m_journal, sale::DeskOptions{line, {}, cashier()});
}

Host::~Host()
{
    m_rig.watch = {};
    m_rig.line.setVisitor({});
}

void Host::setFaults(Random* faults, int Rates::*rate)
{
    m_faults = faults;
    m_rig.line.setFaults(faults, (m_setting.protocol == Protocol::Hex ? hexRates : xmlRates).*rate);
    m_journal.setKills(m_setting.hazards.killsHost ? faults : nullptr, journalKills);
}

void Host::letNeighbourAct()
{
    if (m_setting.neighbour == Neighbour::None || m_faults == nullptr
        || !m_faults->chance(m_closeFailed ? deedsBehindClose : usualDeeds))
        return;
    const FaultKind deed = drawDeed(*m_faults);
    if (m_rig.line.letNeighbourAct(deed, m_faults->between(1, 100'000)))
        m_deeds.append(deed);
}

void Host::call(const char* name, const std::function<void()>& work)
{
    if (isNamed(name, "checkClose"))
        setFaults(m_faults, &Rates::closing);
    m_rig.line.beginCall();
    try {
        work();
    } catch (const BasicException&) {
        checkCall(name);
        meetFailure(name);
        throw;
    } catch (const HostKilled&) {
        meetFailure(name);
        throw;
    } catch (const std::exception& foreign) {
        throw Violation(std::string(name) + " let a foreign exception out: " + foreign.what());
    }
    checkCall(name);
}

void Host::meetFailure(const char* name)
{
    if (isNamed(name, "checkClose"))
        m_closeFailed = true;
    if (!m_fatal)
        m_fatal = m_rig.line.takeInjected();
    setFaults(m_faults, &Rates::usual);
}

void Host::checkCall(const char* name) const
{
    const FaultyLine::Call& done = m_rig.line.call();
    m_report.addCall(QString::fromLatin1(name), done.waited);
    const qint64 budget = m_setting.protocol == Protocol::Hex ? hexBudget : xmlBudget;
    if (done.waited > budget * qMax<qsizetype>(1, done.requests.size()))
        throw Violation(std::string(name) + " waited " + std::to_string(done.waited) + " ms");
    if (m_setting.protocol == Protocol::Xml)
        checkCloses(name, done.requests);
    else
        checkFrames(name, done.requests);
}

void Host::checkCloses(const char* name, const QList<QByteArray>& requests) const
{
    const auto closes = std::count_if(requests.cbegin(), requests.cend(),
        [](const QByteArray& request) { return request.contains("<Command>8</Command>"); });
    if (closes > (isNamed(name, "checkClose") ? 1 : 0))
        throw Violation(std::string(name) + " sent a receipt's closing request again");
}

void Host::checkFrames(const char* name, const QList<QByteArray>& requests) const
{
    // Packet id and check value are left out: the same command in a new frame is a repetition, too. Only a
    // connection asks the same again, at another speed.
    QSet<QByteArray> seen;
    for (const QByteArray& request : requests) {
        const QByteArray kept = isNamed(name, "connect") ? request : request.mid(6).chopped(2);
        if (seen.contains(kept))
            throw Violation(
                std::string(name) + " wrote a frame twice: " + request.toPercentEncoding().toStdString());
        seen.insert(kept);
    }
}

void Host::start()
{
    setFaults(nullptr, &Rates::usual);
    m_rig.line.open();
    m_rig.driver().portOpen();
    reachRegister(false);
    m_shiftOpened = m_rig.clock.milliseconds();
}

SaleResult Host::sell(const QString& id, const receipt::Receipt& receipt, Random* faults)
{
    m_closeFailed = false;
    m_fatal = std::nullopt;
    m_deeds = {};
    m_rig.line.setOurSale(sale::movementOf(receipt));
    setFaults(faults, &Rates::usual);
    SaleResult result;
    result.failure = attempt(id, receipt);
    result.faults = m_fatal ? *m_fatal : m_rig.line.takeInjected();
    m_report.addInjected(result.faults);
    if (result.hasFailed()) {
        recover(faults);
        m_report.addInjected(m_rig.line.takeInjected());
    }
    result.outcome = outcomeOf(id);
    result.hasCloseFailed = m_closeFailed;
    result.deeds = m_deeds;
    m_report.addInjected(m_deeds);
    return result;
}

QString Host::attempt(const QString& id, const receipt::Receipt& receipt)
{
    try {
        QString failure = issue(id, receipt);
        for (int i = 0; i < patience && m_needsReview; ++i) {
            review();
            failure = issue(id, receipt);
        }
        return failure;
    } catch (const BasicException& exception) {
        return exception.tr().ru();
    } catch (const HostKilled&) {
        return QStringLiteral("killed");
    }
}

QString Host::issue(const QString& id, const receipt::Receipt& receipt)
{
    const sale::IssueResult issued
        = m_desk->issue(id, receipt, receipt.items.constFirst().position.getName().toUtf8());
    m_needsReview = issued.failure && issued.failure->exceptionName == QStringLiteral("ReviewNeeded");
    if (issued.failure && !issued.failure->isOfDriver && !m_needsReview && !m_rig.line.isHostDead())
        std::rethrow_exception(issued.failure->exception);
    return issued.failure ? issued.failure->text : QString();
}

void Host::review()
{
    m_report.addReview();
    m_desk->acceptUnknown(cashier().name, QStringLiteral("looked at the tape"));
}

sale::Outcome Host::outcomeOf(const QString& id) const
{
    const std::optional<sale::StoredDocument> document = m_journal.findId(id);
    if (document && document->state == sale::DocumentState::Running)
        throw Violation("a sale was not settled before the next one");
    return document ? sale::verdictOf(*document).outcome : sale::Outcome::NotIssued;
}

void Host::reachRegister(bool reopen)
{
    if (reopen || !m_rig.line.isOpen()) {
        m_rig.driver().portClose();
        m_rig.line.open();
        m_rig.driver().portOpen();
    }
    m_desk->open();
}

void Host::recover(Random* faults)
{
    // Somebody looks after paper and cable. The repair itself may fail; the last one is over a good line, for
    // a register that restarts behind its initialization shows it with the next command only.
    setFaults(faults, &Rates::usual);
    for (int i = 0; faults != nullptr && i < patience && !restore(i > 0); ++i) { }
    setFaults(nullptr, &Rates::usual);
    for (int i = 0; i < patience; ++i) {
        if (restore(i > 0))
            return;
    }
    throw Violation("the register could not be brought back over a good line");
}

bool Host::restore(bool reopen)
{
    if (m_rig.line.isHostDead()) {
        m_rig.restartHost();
        sitDown();
    }
    m_rig.device.setPaper(true);
    m_rig.line.repair();
    try {
        reachRegister(reopen);
    } catch (const BasicException&) {
        return false;
    } catch (const HostKilled&) {
        return false;
    }
    m_rig.device.setPaper(true);
    return true;
}

void Host::keepShiftShort()
{
    if (m_rig.clock.milliseconds() - m_shiftOpened <= longestShift)
        return;
    recover(nullptr);
    const sale::DocumentResult result = m_desk->closeShift();
    if (result.failure)
        std::rethrow_exception(result.failure->exception);
    m_shiftOpened = m_rig.clock.milliseconds();
}
