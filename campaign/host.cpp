#include "host.h"

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "receiptissuer.h"
#include "settlement.h"
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

Host::Host(Rig& rig, Protocol protocol, Report& report, Neighbour neighbour)
    : m_rig(rig)
    , m_driver(rig.driver())
    , m_protocol(protocol)
    , m_line(protocol == Protocol::Hex ? receipt::Protocol::Hex : receipt::Protocol::Xml,
          neighbour != Neighbour::Shared)
    , m_report(report)
{
    m_rig.line.setNeighbour(neighbour != Neighbour::None);
    m_rig.watch = [this](const char* name, const std::function<void()>& work) { call(name, work); };
}

Host::~Host()
{
    m_rig.watch = {};
}

void Host::setFaults(Random* faults, int Rates::*rate)
{
    m_faults = faults;
    m_rig.line.setFaults(faults, (m_protocol == Protocol::Hex ? hexRates : xmlRates).*rate);
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
    const qint64 budget = m_protocol == Protocol::Hex ? hexBudget : xmlBudget;
    if (done.waited > budget * qMax<qsizetype>(1, done.requests.size()))
        throw Violation(std::string(name) + " waited " + std::to_string(done.waited) + " ms");
    if (m_protocol == Protocol::Xml)
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
    m_driver.portOpen();
    reconnect(false);
    prepare();
    m_shiftOpened = m_rig.clock.milliseconds();
}

void Host::prepare()
{
    m_driver.init();
    m_driver.cashierLogin(cashier());
    m_driver.openShift();
}

sale::IssueOptions Host::options() const
{
    sale::IssueOptions options{m_line};
    options.cashier = cashier();
    if (m_known)
        options.known = sale::KnownMark{*m_known, true};
    return options;
}

SaleResult Host::sell(const receipt::Receipt& receipt, Random* faults)
{
    if (m_rig.clock.milliseconds() - m_shiftOpened > longestShift)
        renewShift();
    m_closeFailed = false;
    m_fatal = std::nullopt;
    setFaults(faults, &Rates::usual);
    const sale::IssueResult issued = sale::issueReceipt(m_driver, receipt, options());
    m_known = issued.failure ? std::nullopt : issued.after;
    if (issued.failure && !issued.failure->isOfDriver)
        std::rethrow_exception(issued.failure->exception);
    SaleResult result;
    result.faults = m_fatal ? *m_fatal : m_rig.line.takeInjected();
    result.issued = issued.isIssued() && !m_closeFailed;
    m_report.addInjected(result.faults);
    if (issued.failure) {
        result.failure = issued.failure->text;
        if (!issued.isFinal)
            m_unsettled = issued;
        recover(faults);
        if (m_closeFailed)
            result.verdict = issued.isFinal ? issued.verdict.outcome : m_settled;
        m_report.addInjected(m_rig.line.takeInjected());
    }
    return result;
}

void Host::reconnect(bool reopen)
{
    if (reopen || !m_rig.line.isOpen()) {
        m_driver.portClose();
        m_rig.line.open();
        m_driver.portOpen();
    }
    m_driver.connect();
}

void Host::settle()
{
    if (!m_unsettled)
        return;
    m_settled = sale::settle(m_driver, m_unsettled->before, m_unsettled->ours, m_line).outcome;
    m_unsettled = std::nullopt;
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
    m_rig.device.setPaper(true);
    m_rig.line.repair();
    try {
        reconnect(reopen);
        settle();
        prepare();
        m_driver.clearMarkingCodes();
    } catch (const BasicException&) {
        return false;
    }
    m_rig.device.setPaper(true);
    return true;
}

void Host::renewShift()
{
    recover(nullptr);
    m_driver.zReport();
    m_driver.openShift();
    m_shiftOpened = m_rig.clock.milliseconds();
}
