// Documents that wait in the journal, on their way to the register.

#include "hostclock.h"
#include "queuefixture.h"

#include <functional>
#include <optional>

using namespace sale;

namespace {

TEST_F(Queue, EachKindIsMadeByItsBody)
{
    // The last one is among what the register is asked.
    const std::tuple<QString, QByteArray, std::string> rows[] = {
        {"cashIn", R"({"type": "cashIn", "sum": 12.5})", "cashIn sum12.5"},
        {"cashOut", R"({"type": "cashOut", "sum": 3})", "cashOut sum3"},
        {"openShift", R"({"type": "openShift"})", "openShift"},
        {"zReport", R"({"type": "zReport"})", "zReport"},
        {"xReport", R"({"type": "xReport"})", "xReport"},
        {"accountingReport", R"({"type": "accountingReport"})", "accounting"},
        {"text", R"({"type": "text", "lines": ["one", "", "two"]})", "text:one||two"},
        {"copy", R"({"type": "copy", "documentNumber": 41})", "copy41"},
        {"copy", R"({"type": "copy"})", "copy1"},
    };
    for (const auto& [kind, body, call] : rows) {
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        driver.shiftOpen = kind != "openShift";
        told();
        accept(kind, body);
        const QueuedDocument document = made();
        EXPECT_EQ(document.answer.state, DocumentState::Issued) << body.toStdString();
        const std::string calls = told();
        EXPECT_TRUE(calls.find(call) < calls.npos) << calls;
        EXPECT_EQ(journal->findId(queuedId)->state, DocumentState::Issued);
    }
}

TEST_F(Queue, WhatIsNotThereIsToldAndUnknownDocumentsHoldUpWhatWaits)
{
    const QueuedDocument none = made();
    EXPECT_EQ(none.answer.state, std::nullopt);
    EXPECT_EQ(none.answer.error->exceptionName, "JournalError");
    EXPECT_EQ(driver.calls, "");
    driver.numbers = {7};
    accept("sell", receiptJson);
    const QueuedDocument document = made();
    EXPECT_EQ(document.held, ErrorKind::Other);
    EXPECT_TRUE(document.answer.error->toJson().value("needsReview").toBool());
}

TEST_F(Queue, WhatIsTakenAwayInTheMeantimeIsNotBegun)
{
    std::optional<HostClock> later;
    const std::tuple<std::function<void()>, DocumentState, StateReason, const char*> rows[] = {
        {[&] { journal->withdraw(queuedId); }, DocumentState::NotIssued, StateReason::Deleted, ""},
        {[&] { journal->move(queuedId, "till2"); }, DocumentState::Queued, StateReason::None, ""},
        {[&] {
             later.emplace(60);
             journal->expire();
         },
            DocumentState::NotIssued, StateReason::Expired, ""},
        // Its time is over before anybody has looked.
        {[&] { later.emplace(60); }, DocumentState::NotIssued, StateReason::Expired, "DocumentExpired"},
        // Another program, on another register, comes first.
        {[&] {
             journal->settle(queuedId, journal->begin(queuedId, {{{"drive", "1111"}}}).value(),
                 {.state = DocumentState::Issued, .documentNumber = 5});
         },
            DocumentState::Issued, StateReason::None, ""},
    };
    for (const auto& [work, state, reason, error] : rows) {
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        journal->accept({queuedId, "sell", marked, "till1", {}, QDateTime::currentDateTime().addSecs(30)});
        told();
        driver.onMark = work;
        const QueuedDocument document = made();
        later.reset();
        EXPECT_FALSE(document.held);
        EXPECT_EQ(document.answer.error ? document.answer.error->exceptionName : QString(), error);
        EXPECT_EQ(document.answer.state, state);
        EXPECT_EQ(document.answer.reason, reason);
        const std::string calls = told();
        EXPECT_TRUE(calls.ends_with("mark clear")) << calls;
        // Asked for once more it is answered as it stands, and the register is left alone.
        const QueuedDocument again = made();
        EXPECT_EQ(again.answer.state, state);
        EXPECT_TRUE(again.answer.isReplayed || state != DocumentState::Issued);
        EXPECT_EQ(told(), "");
    }
}

TEST_F(Queue, WhatIsPostedAnewInTheMeantimeIsMadeAsItIsThen)
{
    // That the register refuses the mark is nothing against what was posted anew.
    for (const int markResult : {15, 5}) {
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        accept("sell", marked);
        driver.markResult = markResult;
        driver.onMark = [&] {
            journal->withdraw(queuedId);
            accept("sell", receiptJson);
        };
        EXPECT_TRUE(made().held);
        EXPECT_EQ(driver.calls.find("open"), std::string::npos) << driver.calls;
        EXPECT_EQ(journal->findId(queuedId)->state, DocumentState::Queued);
        driver.onMark = {};
        const QueuedDocument then = made();
        EXPECT_EQ(then.answer.state, DocumentState::Issued);
        EXPECT_EQ(then.answer.attempts.size(), 1);
        told();
    }
}

} // namespace
