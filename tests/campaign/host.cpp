#include "host.h"

#include "abstractfrdriver.h"
#include "exceptions.h"

#include <QSet>

namespace {

constexpr Host::Rates hexRates{25, 250};
constexpr Host::Rates xmlRates{80, 250};
// Most of the day that a shift may last.
constexpr qint64 longestShift = 20LL * 60 * 60 * 1000;
constexpr int patience = 3;
// HEX: three reads, each bound by the ACK budget and the silence around it. XML: a silence, and a second one
// behind a piece of an answer.
constexpr qint64 hexBudget = 3 * (50 * 2000 + 2 * 2000);
constexpr qint64 xmlBudget = 2 * 15'000;

FiscalDocument saleHead()
{
    FiscalDocument document(hw::fr::CheckSale);
    document.setCashierName(QStringLiteral("Иванова"));
    document.setTaxSystem(hw::fr::common::TaxSystemType(1));
    return document;
}

} // namespace

Host::Host(Rig& rig, Protocol protocol, Report& report)
    : m_rig(rig)
    , m_driver(rig.driver())
    , m_protocol(protocol)
    , m_report(report)
{
}

void Host::setFaults(Random* faults, int Rates::*rate)
{
    m_rig.line.setFaults(faults, (m_protocol == Protocol::Hex ? hexRates : xmlRates).*rate);
}

void Host::call(const char* name, const std::function<void()>& work)
{
    m_rig.line.beginCall();
    try {
        work();
    } catch (const BasicException&) {
        checkCall(name);
        throw;
    } catch (const std::exception& foreign) {
        throw Violation(std::string(name) + " let a foreign exception out: " + foreign.what());
    }
    checkCall(name);
}

void Host::checkCall(const char* name) const
{
    const FaultyLine::Call& done = m_rig.line.call();
    m_report.addCall(QString::fromLatin1(name), done.waited);
    const qint64 budget = m_protocol == Protocol::Hex ? hexBudget : xmlBudget;
    if (done.waited > budget * qMax<qsizetype>(1, done.requests.size()))
        throw Violation(std::string(name) + " waited " + std::to_string(done.waited) + " ms");
    if (m_protocol == Protocol::Xml) {
        const auto closes = std::count_if(done.requests.cbegin(), done.requests.cend(),
            [](const QByteArray& request) { return request.contains("<Command>8</Command>"); });
        if (closes > (std::string(name) == "checkClose" ? 1 : 0))
            throw Violation(std::string(name) + " sent a receipt's closing request again");
        return;
    }
    // Packet id and check value are left out: the same command in a new frame is a repetition, too. Only a
    // connection asks the same again, at another speed.
    QSet<QByteArray> seen;
    for (const QByteArray& request : done.requests) {
        const QByteArray kept = std::string(name) == "connect" ? request : request.mid(6).chopped(2);
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
    call("portOpen", [this] { m_driver.portOpen(); });
    reconnect(false);
    prepare();
    m_shiftOpened = m_rig.clock.milliseconds();
}

void Host::prepare()
{
    call("init", [this] { m_driver.init(); });
    m_driver.cashierLogin(
        {QStringLiteral("Иванова"), QStringLiteral("кассир"), QStringLiteral("771234567890")});
    call("openShift", [this] { m_driver.openShift(); });
}

frctl::DriveMark Host::noteDrive()
{
    const auto ask = [this] {
        FnStatusInfo status;
        call("getFnInfo", [&] { status = m_driver.getFnInfo().fnStatus; });
        return std::pair(status.fnNumber, status.lastFdNumber);
    };
    auto mark = ask();
    // Nothing guards an XML answer against a changed digit, so it counts when two in a row agree.
    if (m_protocol == Protocol::Xml) {
        for (auto again = ask(); again != mark; again = ask())
            mark = again;
    }
    return {mark.first, mark.second};
}

SaleResult Host::sell(const QString& name, Random& content, Random* faults)
{
    SaleResult result;
    if (m_rig.clock.milliseconds() - m_shiftOpened > longestShift)
        renewShift();
    std::optional<frctl::DriveMark> before;
    m_closing = false;
    m_issued = false;
    setFaults(faults, &Rates::usual);
    try {
        before = noteDrive();
        fill(name, content);
        setFaults(faults, &Rates::closing);
        close();
    } catch (const BasicException& failure) {
        result.failure = failure.tr().ru();
    }
    result.faults = m_rig.line.takeInjected();
    result.issued = m_issued;
    m_report.addInjected(result.faults);
    if (!result.failure.isEmpty()) {
        setFaults(faults, &Rates::usual);
        if (m_closing && !m_issued)
            result.verdict = judge(before, askAgain());
        recover(faults);
        m_report.addInjected(m_rig.line.takeInjected());
    }
    return result;
}

void Host::fill(const QString& name, Random& content)
{
    m_total = 0;
    m_marked = content.chance(100);
    const int positions = content.between(1, 3);
    call("openShift", [this] { m_driver.openShift(); });
    const QString mark = QStringLiteral("0104601234567890215%1\x1D"
                                        "93test")
                             .arg(content.between(1000, 9999));
    if (m_marked)
        call("checkMarkingCode", [&] { m_driver.checkMarkingCode({1, mark, 1.0, 0}, false); });
    call("checkOpen", [this] { m_driver.checkOpen(saleHead()); });
    for (int i = 0; i < positions; ++i)
        addPosition(name, m_marked && i == 0 ? mark : QString(), content);
    if (content.chance(300))
        call("checkPrint", [this] { m_driver.checkPrint({QStringLiteral("Спасибо за покупку")}); });
    call("checkTotal", [this] { m_driver.checkTotal(); });
    pay(content);
}

void Host::addPosition(const QString& name, const QString& mark, Random& content)
{
    const int price = content.between(1, 999'999);
    const int count = content.between(1, 3);
    m_total += qint64{price} * (mark.isEmpty() ? count : 1);
    FrPosition position(name, price / 100.0, mark.isEmpty() ? count : 1);
    position.setTaxCode(content.between(1, 6));
    position.setPaymentMethod(4);
    position.setPaymentObject(mark.isEmpty() ? 1 : 33);
    if (!mark.isEmpty())
        position.setMarkingCode(mark, MarkCommon);
    call("checkAddPosition", [&] { m_driver.checkAddPosition(position); });
}

void Host::pay(Random& content)
{
    const qint64 card = content.chance(500) ? m_total / 2 : 0;
    const qint64 cash = m_total - card + (content.chance(500) ? 10'000 : 0);
    const auto payment = [this](int kind, qint64 sum) {
        call("checkPay", [&] { m_driver.checkPay(FrPayment(kind, static_cast<double>(sum) / 100)); });
    };
    if (card > 0)
        payment(1, card);
    payment(0, cash);
}

void Host::close()
{
    m_closing = true;
    call("checkClose", [this] { m_driver.checkClose(saleHead()); });
    m_issued = true;
    call("checkWaitForPrint", [this] { m_driver.checkWaitForPrint(); });
    if (m_marked)
        call("clearMarkingCodes", [this] { m_driver.clearMarkingCodes(); });
}

void Host::reconnect(bool reopen)
{
    if (reopen || !m_rig.line.isOpen()) {
        call("portClose", [this] { m_driver.portClose(); });
        m_rig.line.open();
        call("portOpen", [this] { m_driver.portOpen(); });
    }
    call("connect", [this] { m_driver.connect(); });
}

std::optional<frctl::DriveMark> Host::askAgain()
{
    for (int i = 0; i < patience; ++i) {
        try {
            reconnect(i > 0);
            return noteDrive();
        } catch (const BasicException&) {
            // Asked again, as long as there is hope.
        }
    }
    return std::nullopt;
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
        prepare();
        call("clearMarkingCodes", [this] { m_driver.clearMarkingCodes(); });
    } catch (const BasicException&) {
        return false;
    }
    m_rig.device.setPaper(true);
    return true;
}

void Host::renewShift()
{
    recover(nullptr);
    call("zReport", [this] { m_driver.zReport(); });
    call("openShift", [this] { m_driver.openShift(); });
    m_shiftOpened = m_rig.clock.milliseconds();
}
