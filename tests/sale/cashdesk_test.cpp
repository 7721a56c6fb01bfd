// What a host program makes its documents with.

#include "documentanswer.h"
#include "documentissuer.h"
#include "identifiedsale.h"
#include "queuefixture.h"

#include <cstring>

using namespace sale;

namespace {

const QString saleId = QStringLiteral("till-1:42");
const QByteArray json = R"({"type": "sell", "taxationType": "osn", "operator": {"name": "Иванова"},
    "items": [{"name": "Хлеб", "price": 10, "quantity": 1, "amount": 10, "tax": {"type": "vat10"}}],
    "payments": [{"type": "cash", "sum": 6}, {"type": "electronically", "sum": 1}, {"type": "credit", "sum": 3}]})";

class Desk : public Queue
{
protected:
    Desk() { driver.payments = {{0, 6.0}, {1, 1.0}, {3, 3.0}}; }

    CashDesk desk()
    {
        return {driver, *journal, {{receipt::Protocol::Hex, true}, "till1", {"Иванова", {}, {}}}};
    }
    DocumentState state() const { return journal->findId(saleId)->state; }
};

TEST_F(Desk, ReachesTheRegisterAnewAfterAFailureAlone)
{
    CashDesk one = desk();
    EXPECT_TRUE(one.issue(saleId, json).isIssued());
    EXPECT_EQ(
        told(), "connect init shift registers next sums ask open position total pay1 pay3 pay0 close wait");
    // The mark behind it is that before the next one.
    driver.refused = "open";
    EXPECT_EQ(one.issue({}, json).verdict, Outcome::Cancelled);
    EXPECT_EQ(told().substr(0, 10), "shift next");
    driver.refused.clear();
    EXPECT_TRUE(one.issue({}, json).isIssued());
    EXPECT_EQ(told().substr(0, 12), "connect init");
}

TEST_F(Desk, ReadsTheClockBehindADocumentForTheJournal)
{
    enum Answer { Unasked, Told, Refused, Lost };
    // How the next document begins is the last one.
    const std::tuple<receipt::Protocol, bool, Answer, const char*> rows[] = {
        {receipt::Protocol::Hex, true, Told, "shift next"},
        {receipt::Protocol::Hex, false, Unasked, "shift next"},
        {receipt::Protocol::Xml, true, Unasked, "ask"},
        {receipt::Protocol::Hex, true, Refused, "shift next"},
        {receipt::Protocol::Hex, true, Lost, "connect init"},
    };
    for (const auto& [protocol, isWanted, answer, next] : rows) {
        SCOPED_TRACE(answer);
        SqliteStore kept(QStringLiteral(":memory:"));
        RegisterLine line(protocol, true);
        line.isClockRead = isWanted;
        CashDesk one(driver, kept, {line, "till1", {"Иванова", {}, {}}});
        driver.refused = answer == Refused ? "clock" : "";
        driver.lost = answer == Lost ? "clock" : "";
        const IssueResult result = one.issue(saleId, json);
        EXPECT_TRUE(result.isIssued());
        EXPECT_FALSE(result.failure);
        EXPECT_TRUE(told().ends_with(answer == Unasked ? " wait" : " clock"));
        const StoredDocument document = kept.findId(saleId).value();
        EXPECT_EQ(document.state, DocumentState::Issued);
        EXPECT_EQ(answerOf(document, protocol).dateTime, answer == Told ? driver.time : QDateTime());
        one.issue({}, json);
        EXPECT_TRUE(told().starts_with(next));
    }
}

TEST_F(Desk, WhatLeavesNoTraceMayBePrintedTwice)
{
    quint64 repeats = 3;
    RegisterLine line;
    line.repeats = [&repeats] { return repeats; };
    for (const quint64 more : {0U, 2U}) {
        const DocumentSteps steps{.close = [&repeats, more] { repeats += more; }};
        EXPECT_EQ(issueTraceless(driver, steps, {line, {}, nullptr}).isSentAgain, more > 0);
    }
}

TEST_F(Desk, AnotherRegisterThanTheOneExpectedGetsNothing)
{
    const std::tuple<receipt::Protocol, ExpectedRegister, bool, const char*> rows[]
        = {{receipt::Protocol::Hex, {"0030001", {}}, true, "connect init shift"},
            {receipt::Protocol::Hex, {"0030001", "7721000012"}, true, "connect inn init shift"},
            {receipt::Protocol::Xml, {"0030001", "7707083893"}, true, "connect init"},
            {receipt::Protocol::Hex, {"0030002", "7721000012"}, false, "connect"},
            {receipt::Protocol::Xml, {"0030002", {}}, false, "connect"},
            {receipt::Protocol::Hex, {{}, "7707083893"}, false, "connect inn"}};
    for (const auto& [protocol, expected, isRight, questions] : rows) {
        DeskOptions options{{protocol, true}, "till1", {"Иванова", {}, {}}};
        options.line.expected = expected;
        const IssueResult result = CashDesk(driver, *journal, options).issue({}, json);
        EXPECT_EQ(!result.failure || result.failure->kind != ErrorKind::WrongRegister, isRight);
        const std::string calls = told();
        EXPECT_EQ(calls.substr(0, isRight ? std::strlen(questions) : calls.size()), questions);
        EXPECT_EQ(result.verdict, isRight ? result.verdict : Verdict(Outcome::None));
    }
}

TEST_F(Desk, IdMakesOneSaleWhateverHappens)
{
    driver.failing = "close";
    driver.interrupt = true;
    const IssueResult broken = desk().issue(saleId, json);
    EXPECT_FALSE(broken.isFinal);
    EXPECT_EQ(state(), DocumentState::Running);
    told();
    driver.failing = "connect";
    driver.interrupt = false;
    const IssueResult unreached = desk().issue(saleId, json);
    EXPECT_EQ(unreached.verdict, Outcome::Unknown);
    EXPECT_FALSE(unreached.isFinal);
    EXPECT_TRUE(unreached.failure);
    driver.failing.clear();
    driver.numbers = {2};
    CashDesk later = desk();
    const IssueResult settled = later.issue(saleId, json);
    EXPECT_TRUE(settled.isIssued() && settled.isRepeated && settled.isFinal);
    told();
    EXPECT_TRUE(later.issue(saleId, json).isRepeated);
    EXPECT_EQ(told(), "");
}

TEST_F(Desk, MistakesOfTheCallerAreToldBeforeAnythingIsAsked)
{
    journal->accept({"till-1:41", "sell", "{}", {}});
    const std::tuple<QString, QByteArray, const char*> rows[] = {
        {"short", json, "has not 8 to 64"},
        {"till-1:41", json, "is the id of another receipt"},
        {saleId, "{", "syntax error"},
        {saleId, QByteArray(json).replace("\"amount\": 10", "\"amount\": 11"), "items[0].amount"},
    };
    for (const auto& [id, body, text] : rows) {
        const IssueResult result = desk().issue(id, body);
        ASSERT_TRUE(result.failure) << text;
        EXPECT_TRUE(result.failure->text.contains(text)) << result.failure->text.toStdString();
        EXPECT_EQ(result.failure->kind, ErrorKind::Data) << text;
        EXPECT_EQ(result.verdict, Outcome::None);
    }
    EXPECT_EQ(driver.calls, "");
    EXPECT_FALSE(journal->findId(saleId));
}

TEST_F(Desk, ShiftThatIsAsItShouldBeMakesNoDocument)
{
    CashDesk one = desk();
    const DocumentResult opened = one.openShift();
    EXPECT_TRUE(opened.isDone());
    EXPECT_EQ(opened.verdict, Outcome::None);
    EXPECT_TRUE(journal->find({}).isEmpty());
    EXPECT_EQ(told(), "connect init shift");
}

} // namespace
