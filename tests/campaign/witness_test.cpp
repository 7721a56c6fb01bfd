// Documents through the library of sales, over both protocols: what one leaves behind for the next, what they
// cost, and what comes of it when a request is sent again or a neighbour comes in between.

#include "abstractfrdriver.h"
#include "documentid.h"
#include "documentissuer.h"
#include "documentstart.h"
#include "identifiedsale.h"
#include "receiptissuer.h"
#include "receiptparser.h"
#include "review.h"
#include "rig.h"
#include "sqlitestore.h"

#include <gtest/gtest.h>
#include <QRegularExpression>

using sale::DocumentKind;

namespace {

const FrUser ivanova{QStringLiteral("Иванова"), QStringLiteral("кассир"), QStringLiteral("772100000040")};
const FrUser petrova{QStringLiteral("Петрова"), {}, {}};

/// A driver at work on its register.
class Till
{
public:
    explicit Till(Protocol language, bool isExclusive = true)
        : line(language == Protocol::Hex ? receipt::Protocol::Hex : receipt::Protocol::Xml, isExclusive)
        , m_rig(language)
    {
        rig().start();
    }

    Rig& rig() { return m_rig; }
    AbstractFrDriver& driver() { return m_rig.driver(); }

    sale::IssueResult sell(const QByteArray& json)
    {
        sale::IssueOptions options{line};
        options.cashier = ivanova;
        return sale::issueReceipt(driver(), receipt::receiptFromText(json), options);
    }

    /// With what the journal knows, as of this connection or of an earlier one.
    sale::IssueResult sellInJournal(const QByteArray& json, bool isOfThisConnection)
    {
        sale::IdentifiedSale identified(journal, {sale::newDocumentId(), "sell", json, "till1"});
        sale::IssueOptions options{line, &identified};
        options.cashier = ivanova;
        if (const auto mark = sale::lastKnownMark(journal, "till1"))
            options.known = sale::KnownMark{*mark, isOfThisConnection};
        return sale::issueReceipt(driver(), receipt::receiptFromText(json), options);
    }

    sale::DocumentResult issue(
        DocumentKind kind, const std::function<void()>& close, const FrUser& cashier = ivanova)
    {
        sale::DocumentSteps steps;
        steps.close = close;
        return sale::issueDocument(driver(), {kind}, steps, {line, cashier});
    }

    sale::DocumentResult moveCash(DocumentKind kind, double roubles, const FrUser& cashier = ivanova,
        sale::IdentifiedSale* identified = nullptr)
    {
        const auto type = kind == DocumentKind::CashIn ? hw::fr::CheckCashIn : hw::fr::CheckCashOut;
        sale::DocumentSteps steps;
        steps.open = [=, this] { driver().moneyCheckOpen(type, {}); };
        steps.close = [=, this] { driver().moneyCheckClose(roubles); };
        steps.finish = [this] { driver().moneyCheckWaitForPrint(); };
        return sale::issueDocument(
            driver(), {kind, {}, qRound64(roubles * 100)}, steps, {line, cashier, identified});
    }

    const sale::RegisterLine line;
    sale::SqliteStore journal{":memory:"};

private:
    Rig m_rig;
};

struct Step
{
    const char* name;
    std::function<void(Till&)> make;
    bool needsClosedShift = false;
};

QByteArray receiptText(const QByteArray& head, const QByteArray& items, const QByteArray& sum = "10")
{
    return "{" + head + R"("items":[)" + items + R"(],"payments":[{"type":"cash","sum":)" + sum + "}]}";
}

const QByteArray milk = R"({"name":"Молоко","price":10,"quantity":1,"amount":10,"tax":{"type":"vat10"}})";
const QByteArray jacket = R"({"name":"Куртка","price":10,"quantity":1,"amount":10,"tax":{"type":"vat10"},
    "paymentObject":"commodityWithMarking","markingCode":"0104600000000015215!Ab1cD\u001d93dGVz"})";
const QByteArray wideText = R"(,{"type":"text","text":"wide","doubleWidth":true})";
const QByteArray osn = R"("type":"sell","taxationType":"osn",)";
const QByteArray byPetrova = R"("type":"sell","taxationType":"osn","operator":{"name":"Петрова"},)";

Step receiptStep(
    const char* name, const QByteArray& items, const QByteArray& head = osn, const QByteArray& sum = "10")
{
    return {name, [json = receiptText(head, items, sum)](Till& till) { till.sell(json); }};
}

const QList<Step>& steps()
{
    static const QList<Step> list{
        receiptStep("sale", milk),
        receiptStep("sale by Petrova", milk, byPetrova),
        receiptStep("sale without tax system", milk, R"("type":"sell",)"),
        receiptStep("sale of another tax system", milk, R"("type":"sell","taxationType":"usnIncome",)"),
        receiptStep("return", milk, R"("type":"sellReturn","taxationType":"osn",)"),
        receiptStep("with change", milk, osn, "500"),
        receiptStep("by mail", milk, osn + R"("clientInfo":{"emailOrPhone":"a@b.example"},)"),
        receiptStep("with text", milk + wideText),
        receiptStep(
            "with barcode", milk + R"(,{"type":"barcode","barcode":"4601234567890","barcodeType":"EAN13"})"),
        receiptStep("marked", jacket),
        receiptStep("two goods", milk + "," + milk, osn, "20"),
        {"refused on the way, in a wide font",
            [](Till& till) {
                receipt::Receipt broken = receipt::receiptFromText(receiptText(osn, jacket + wideText));
                broken.items[0].position.setCount(-1);
                sale::IssueOptions options{till.line};
                options.cashier = petrova;
                sale::issueReceipt(till.driver(), broken, options);
            }},
        {"cash in", [](Till& till) { till.moveCash(DocumentKind::CashIn, 500); }},
        {"cash out by Petrova", [](Till& till) { till.moveCash(DocumentKind::CashOut, 5, petrova); }},
        {"cash out refused", [](Till& till) { till.moveCash(DocumentKind::CashOut, 1e6, petrova); }},
        {"closing",
            [](Till& till) { till.issue(DocumentKind::ShiftClosing, [&] { till.driver().zReport(); }); }},
        {"closing by Petrova",
            [](Till& till) {
                till.issue(
                    DocumentKind::ShiftClosing, [&] { till.driver().zReport(); }, petrova);
            }},
        {"X-report",
            [](Till& till) {
                sale::startDocument(till.driver(), petrova);
                till.driver().xReport();
            }},
        {"report on settlements",
            [](Till& till) { till.issue(DocumentKind::Report, [&] { till.driver().accountingReport(); }); },
            true},
        {"text",
            [](Till& till) {
                sale::startDocument(till.driver(), ivanova);
                till.driver().textDocOpen(hw::fr::CheckNonFiscal);
                till.driver().textDocPrint({QStringLiteral("строка")});
                till.driver().textDocClose();
            }},
    };
    return list;
}

/// A request without what counts requests and tells the time.
QByteArray comparable(Protocol language, const QByteArray& request)
{
    if (language == Protocol::Hex)
        return request.mid(6).chopped(2);
    static const QRegularExpression changing(QStringLiteral("<(RequestId|DateTime)>[^<]*"));
    return QString::fromUtf8(request).remove(changing).toUtf8();
}

/// Between two steps nothing is made but the shift that the second one needs, and that in no one's name.
QList<QByteArray> requestsOf(Protocol language, Till& till, const Step& step)
{
    if (step.needsClosedShift)
        till.driver().zReport();
    else
        till.driver().openShift();
    till.rig().line.beginCall();
    step.make(till);
    QList<QByteArray> requests;
    for (const QByteArray& request : till.rig().line.call().requests)
        requests.append(comparable(language, request));
    return requests;
}

class Protocols : public testing::TestWithParam<Protocol>
{
};

TEST_P(Protocols, DocumentDoesNotDependOnTheOneBefore)
{
    for (const Step& second : steps()) {
        Till fresh(GetParam());
        // So that there is something to take out.
        fresh.moveCash(DocumentKind::CashIn, 10000);
        const QList<QByteArray> alone = requestsOf(GetParam(), fresh, second);
        EXPECT_FALSE(alone.isEmpty());
        for (const Step& first : steps()) {
            Till till(GetParam());
            till.moveCash(DocumentKind::CashIn, 10000);
            requestsOf(GetParam(), till, first);
            EXPECT_EQ(requestsOf(GetParam(), till, second), alone) << second.name << " behind " << first.name;
        }
    }
}

TEST_P(Protocols, SaleCostsFewExchanges)
{
    const bool isHex = GetParam() == Protocol::Hex;
    for (const bool isExclusive : {true, false}) {
        Till till(GetParam(), isExclusive);
        const auto costOf = [&](const std::function<void()>& work) {
            const int before = till.rig().line.requestCount();
            work();
            return till.rig().line.requestCount() - before;
        };
        const auto sell = [&](bool isOfThisConnection) {
            const sale::IssueResult result = till.sellInJournal(receiptText(osn, milk), isOfThisConnection);
            EXPECT_TRUE(result.isIssued());
            const quint32 number = till.driver().getFnInfo().fnStatus.lastFdNumber;
            EXPECT_EQ(result.verdict.number, isHex && !isExclusive ? 0U : number);
        };
        const int asking = costOf([&] { till.driver().getFnInfo(); });
        // Opens the shift.
        sell(true);
        sale::IdentifiedSale cash(till.journal, {"cash", "cashIn", "{}", "till1"});
        till.moveCash(DocumentKind::CashIn, 100, ivanova, &cash);
        const int single = costOf([&] {
            till.driver().connect();
            till.driver().init();
            sell(false);
        });
        EXPECT_LE(single - asking, isHex ? 21 : 8);
        const int first = costOf([&] { sell(false); }) - asking;
        // Without any mark it is seven and two.
        EXPECT_EQ(costOf([&] { sell(true); }) - asking, isExclusive ? (isHex ? 7 : 2) + 2 : first);
    }
}

// The register has done what it was told, and its answer is lost.
TEST_P(Protocols, CashThatWentInIsCounted)
{
    const bool isHex = GetParam() == Protocol::Hex;
    const std::tuple<FaultKind, sale::Outcome, int> rows[] = {
        {FaultKind::None, sale::Outcome::Issued, 1},
        {FaultKind::Silence, isHex ? sale::Outcome::NotIssued : sale::Outcome::Issued, 1},
        {FaultKind::Lost, sale::Outcome::Issued, isHex ? 1 : 2},
        // Over XML that is the answer to the second request, and the second one comes with the count.
        {FaultKind::Late, sale::Outcome::Issued, isHex ? 1 : 2},
        {FaultKind::PaperOut, sale::Outcome::NotIssued, 1},
    };
    for (const auto& [fault, outcome, times] : rows) {
        Till till(GetParam());
        till.moveCash(DocumentKind::CashIn, 1000);
        // The exchanges of the next one are the same, and its last but those behind it is the document.
        const int start = till.rig().line.requestCount();
        till.moveCash(DocumentKind::CashIn, 1000);
        const int cost = till.rig().line.requestCount() - start;
        const int behind = isHex ? 0 : 7;
        if (fault != FaultKind::None)
            till.rig().line.planFault(cost - 1 - behind, fault);
        const qint64 cash = till.rig().device.state().drawer.cash;
        const sale::DocumentResult result = till.moveCash(DocumentKind::CashIn, 100);
        EXPECT_EQ(result.verdict.outcome, outcome) << static_cast<int>(fault);
        EXPECT_EQ(result.verdict.times, times) << static_cast<int>(fault);
        const int went = outcome == sale::Outcome::Issued ? times : 0;
        EXPECT_EQ(till.rig().device.state().drawer.cash - cash, 10'000 * went) << static_cast<int>(fault);
    }
}

// The close fails, and before the question about it another program makes a document.
TEST_P(Protocols, NeighboursDocumentIsNotTakenForOurs)
{
    using enum FaultKind;
    constexpr auto issued = sale::Outcome::Issued;
    constexpr auto notIssued = sale::Outcome::NotIssued;
    constexpr auto unknown = sale::Outcome::Unknown;
    const bool isHex = GetParam() == Protocol::Hex;
    // What it comes to over HEX, where a document that is not closed is still open and a neighbour has to
    // wait, on a line of our own, and on a shared one.
    const std::tuple<FaultKind, FaultKind, sale::Outcome, sale::Outcome, sale::Outcome> rows[] = {
        {Silence, None, notIssued, notIssued, notIssued},
        {Silence, NeighbourSells, notIssued, notIssued, notIssued},
        // On a line of our own that is ours by definition.
        {Silence, NeighbourSellsTheSame, notIssued, issued, unknown},
        {Silence, NeighbourPutsCashIn, notIssued, notIssued, notIssued},
        {Silence, NeighbourClosesShift, notIssued, notIssued, notIssued},
        {Silence, NeighbourPrintsTotals, notIssued, notIssued, notIssued},
        {Silence, NeighbourRegisters, notIssued, unknown, unknown},
        {Lost, None, issued, issued, unknown},
        {Lost, NeighbourSells, unknown, unknown, unknown},
        {Lost, NeighbourSellsTheSame, unknown, unknown, unknown},
        {Lost, NeighbourPutsCashIn, issued, issued, unknown},
        {Lost, NeighbourClosesShift, unknown, unknown, unknown},
        {Lost, NeighbourPrintsTotals, issued, issued, unknown},
        {Lost, NeighbourRegisters, unknown, unknown, unknown},
    };
    for (const auto& [close, neighbour, ofHex, ofOwn, ofShared] : rows) {
        for (const bool isOwn : {true, false}) {
            Till till(GetParam(), isOwn);
            const QByteArray text = receiptText(osn, milk);
            till.sell(text);
            const int start = till.rig().line.requestCount();
            till.sell(text);
            const int exchange = till.rig().line.requestCount() - start - 1 - (isHex ? 1 : 0);
            till.rig().line.planFault(exchange, close);
            till.rig().line.setOurSale(sale::movementOf(receipt::receiptFromText(text)));
            if (neighbour != None)
                till.rig().line.planFault(exchange + 1, neighbour);
            const sale::IssueResult result = till.sell(text);
            EXPECT_TRUE(result.failure);
            const sale::Outcome own = isHex ? ofHex : ofOwn;
            const sale::Outcome shared = isHex && close == Silence ? ofHex : ofShared;
            EXPECT_EQ(result.verdict.outcome, isOwn ? own : shared)
                << static_cast<int>(close) << ' ' << static_cast<int>(neighbour) << ' ' << isOwn;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, Protocols, testing::Values(Protocol::Hex, Protocol::Xml),
    [](const auto& test) { return test.param == Protocol::Hex ? std::string("HEX") : std::string("XML"); });

} // namespace
