// A receipt that fails, and what the journal has of it.

#include "idconflict.h"
#include "identifiedsale.h"
#include "issuefixture.h"
#include "review.h"
#include "sqlitestore.h"

using namespace sale;

namespace {

TEST_F(Issue, FailureDecidesWhatBecomesOfTheDocument)
{
    struct Row
    {
        const char* failing;
        bool interrupt;
        std::string calls;
        Verdict verdict;
        /// In the journal, Running for a sale that the next run settles; nothing when it was not begun.
        std::optional<DocumentState> stored;
        QList<quint32> numbers = {7};
    };
    constexpr Outcome none = Outcome::None;
    constexpr DocumentState undone = DocumentState::NotIssued;
    constexpr DocumentState open = DocumentState::Running;
    constexpr DocumentState issued = DocumentState::Issued;
    const std::string begun = noting + " mark open requisite print position barcode total";
    const Row rows[] = {
        {"shift", false, "shift", none, {}},
        {"sums", false, noting, none, {}},
        {"mark", false, noting + " mark clear", none, {}},
        {"mark", true, noting + " mark clear", none, {}},
        {"open cancel", false, noting + " mark open cancel clear", none, undone},
        {"total", false, begun + " cancel clear", Outcome::Cancelled, undone},
        {"total cancel", false, begun + " cancel", Outcome::NotCancelled, open},
        {"open", true, noting + " mark open cancel clear", Outcome::Cancelled, undone},
        {"total", true, begun + " cancel clear", Outcome::Cancelled, undone},
        {"total cancel", true, begun + " cancel", Outcome::NotCancelled, open},
        {"close", false, filled + " close connect " + asked, {Outcome::Issued, 8}, issued, {7, 8}},
        {"close", false, filled + " close connect " + asked, Outcome::Unknown, DocumentState::Unknown,
            {7, 9}},
        {"close", false, filled + " close connect " + asked + " init " + asked + " clear", Outcome::NotIssued,
            undone},
        {"close", false, filled + " close connect " + asked + " init " + asked, {Outcome::Issued, 8}, issued,
            {7, 7, 8}},
        {"close init", false, filled + " close connect " + asked + " init", Outcome::Unknown, open},
        {"close connect", false, filled + " close connect", Outcome::Unknown, open},
        {"close", true, filled + " close", Outcome::Unknown, open},
        {"wait", false, filled + " close wait", Outcome::Issued, issued},
        {"wait", true, filled + " close wait", Outcome::Issued, issued},
    };
    for (const Row& row : rows) {
        SqliteStore journal(QStringLiteral(":memory:"));
        // Else the register would be asked for documents that the journal does not know.
        acceptUnknown(journal, {}, {.drive = driver.drive, .shift = 3, .nextReceipt = 7}, "anna", {});
        IdentifiedSale identified(journal, QStringLiteral("A"), "{}");
        driver.calls.clear();
        driver.failing = row.failing;
        driver.interrupt = row.interrupt;
        driver.numbers = row.numbers;
        const IssueResult result = issueReceipt(driver, receipt, {hexLine, &identified});
        EXPECT_EQ(driver.calls, row.calls) << row.failing;
        EXPECT_EQ(result.verdict, row.verdict) << row.calls;
        const std::optional<StoredDocument> record = identified.record();
        EXPECT_EQ(record ? std::optional(record->state) : std::nullopt, row.stored) << row.calls;
        EXPECT_EQ(result.isFinal, row.stored != open) << row.calls;
        ASSERT_TRUE(result.failure) << row.calls;
        if (record) {
            EXPECT_EQ(record->attempts.constLast().note.failure.value("text"), result.failure->text);
        }
        EXPECT_EQ(result.failure->isOfDriver, !row.interrupt);
        if (row.interrupt)
            EXPECT_THROW(std::rethrow_exception(result.failure->exception), Interruption);
        else
            EXPECT_EQ(result.failure->exceptionName + result.failure->text,
                QStringLiteral("FrPaperExceptionНет бумаги"));
    }
}

TEST_F(Issue, ClosedShiftIsOpenedByADocumentOfItsOwn)
{
    const std::tuple<const char*, bool, bool, std::string, DocumentState> rows[] = {
        {"", false, false, "", DocumentState::Issued},
        {"openShift", false, true, " connect ask", DocumentState::Issued},
        {"openShift", false, false, " connect ask init ask", DocumentState::NotIssued},
        {"openShift", true, true, "", DocumentState::Running},
    };
    for (const auto& [failing, interrupt, opensUnheard, calls, state] : rows) {
        const bool isOpened = state == DocumentState::Issued;
        SqliteStore journal(QStringLiteral(":memory:"));
        IdentifiedSale identified(journal, {"A", "sell", "{}", "till1"});
        RecordingDriver closed(&settings);
        closed.shiftOpen = false;
        closed.failing = failing;
        closed.interrupt = interrupt;
        closed.opensUnheard = opensUnheard;
        closed.numbers = isOpened ? QList<quint32>{1, 2} : QList<quint32>{1};
        const IssueResult result = issueReceipt(closed, receipt, {hexLine, &identified});
        const std::string opened = "shift ask openShift" + calls;
        EXPECT_EQ(closed.calls.substr(0, closed.calls.find(" registers")), opened);
        EXPECT_EQ(result.verdict, isOpened ? countedOn(3) : Verdict(Outcome::None)) << opened;
        EXPECT_EQ(identified.record().has_value(), isOpened);
        const StoredDocument opening = journal.find({.registerName = "till1"}).constFirst();
        EXPECT_EQ(opening.request.kind, QStringLiteral("openShift"));
        EXPECT_EQ(opening.state, state) << opened;
        EXPECT_EQ(opening.documentNumber, isOpened ? 2 : 0);
    }
}

TEST_F(Issue, RefusesToOpenWhatNobodyCouldJudgeAfterwards)
{
    const std::tuple<RegisterLine, const char*, std::string> rows[]
        = {{hexLine, "", noting}, {receipt::Protocol::Xml, "99", "ask sums ask sums"}};
    driver.numbers = {0};
    for (const auto& [line, drive, calls] : rows) {
        driver.calls.clear();
        driver.drive = QString::fromLatin1(drive);
        const IssueResult result = issueReceipt(driver, receipt, {line});
        EXPECT_EQ(driver.calls, calls);
        EXPECT_EQ(result.verdict, Outcome::None);
        ASSERT_TRUE(result.failure);
    }
}

TEST_F(Issue, WhatTheJournalKnowsIsAnsweredWithoutTheRegister)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    const DriveMark before{driver.drive, 7};
    const std::tuple<std::optional<Verdict>, Verdict, bool> rows[] = {
        {Verdict(Outcome::Issued, 8), Verdict(Outcome::Issued, 8), true},
        {Verdict(Outcome::Unknown), Outcome::Unknown, true},
        // Begun, by another program or by one that ended.
        {std::nullopt, Outcome::Unknown, false},
    };
    int number = 0;
    for (const auto& [settled, told, isFinal] : rows) {
        // No JSON, and still another receipt under the same id is noticed.
        const QString id = QString::number(++number);
        IdentifiedSale identified(journal, id, "milk 10.00");
        identified.begin(before);
        if (settled)
            identified.settle(*settled);
        const IssueResult result = issueReceipt(driver, receipt, {hexLine, &identified});
        EXPECT_EQ(driver.calls, "");
        EXPECT_EQ(result.verdict, told);
        EXPECT_EQ(result.isFinal, isFinal);
        EXPECT_TRUE(result.isRepeated);
        EXPECT_EQ(result.before, before);
        EXPECT_THROW(IdentifiedSale(journal, id, "bread 10.00"), IdConflict);
    }
}

TEST_F(Issue, CorrectedReceiptIsJudgedByItsOwnSums)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    IdentifiedSale first(journal, QStringLiteral("A"), "milk 10.00");
    Movement former = movementOf(receipt);
    former.payments[0] += 700;
    first.begin({driver.drive, 7}, {}, former);
    first.settle(Outcome::NotIssued);
    IdentifiedSale corrected(journal, QStringLiteral("A"), "milk 3.00");
    const IssueResult result = issueReceipt(driver, receipt, {hexLine, &corrected});
    EXPECT_TRUE(result.isIssued());
    EXPECT_EQ(result.ours, movementOf(receipt));
    EXPECT_EQ(Movement::fromJson(corrected.lastAttempt()->start.movement), movementOf(receipt));
    EXPECT_EQ(result.after->sums, markAfter(result.before, movementOf(receipt)).sums);
}

TEST_F(Issue, MisreadDriveIsAskedAgain)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    const RegisterLine shared{receipt::Protocol::Xml, false};
    const std::pair<std::optional<QString>, std::string> rows[] = {
        {QStringLiteral("9909"), "ask sums ask ask sums ask sums"},
        // Known to the journal by now.
        {std::nullopt, "ask sums"},
        {QStringLiteral("9909"), "ask sums ask ask sums ask sums"},
    };
    int number = 0;
    for (const auto& [misread, questions] : rows) {
        driver.calls.clear();
        driver.misreadDrive = misread;
        IdentifiedSale document(journal, QString::number(++number), "milk 10.00");
        const IssueResult result = issueReceipt(driver, receipt, {shared, &document});
        EXPECT_EQ(driver.calls.substr(0, driver.calls.find(" mark")), questions);
        EXPECT_EQ(result.before.drive, driver.drive);
        EXPECT_EQ(journal.find({.drive = driver.drive}).size(), number);
    }
}

TEST_F(Issue, JournalThatFailsIsTold)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    IdentifiedSale identified(journal, QStringLiteral("A"), "{}");
    // Another program begins the same sale in the meantime.
    driver.onMark = [&] { identified.begin({driver.drive, 7}); };
    const IssueResult result = issueReceipt(driver, receipt, {receipt::Protocol::Hex, &identified});
    EXPECT_EQ(driver.calls, noting + " mark clear");
    EXPECT_EQ(result.verdict, Outcome::None);
    ASSERT_TRUE(result.failure);
    EXPECT_EQ(result.failure->exceptionName, QStringLiteral("JournalError"));
}

} // namespace
