#include "idconflict.h"
#include "identifiedsale.h"
#include "markjudgement.h"
#include "receiptissuer.h"
#include "recordingdriver.h"
#include "review.h"
#include "sqlitestore.h"

#include <gtest/gtest.h>

using namespace sale;
using receipt::ReceiptItem;

namespace {

const RegisterLine hexLine{receipt::Protocol::Hex, true};
/// What is asked before a receipt, and after a close that failed.
const std::string noting = "registers next sums";
const std::string asked = noting + " ask";

Verdict countedOn(quint32 number)
{
    Verdict verdict(Outcome::Issued, number);
    verdict.isNumberRead = false;
    return verdict;
}

class Issue : public testing::Test
{
protected:
    Issue()
    {
        ReceiptItem goods;
        goods.position = FrPosition(QStringLiteral("Молоко"), 10, 1);
        goods.position.setMarkingCode(QStringLiteral("0104"), MarkCommon);
        ReceiptItem text;
        text.kind = ReceiptItem::Text;
        ReceiptItem barcode;
        barcode.kind = ReceiptItem::BarcodeItem;
        receipt.items = {text, goods, barcode};
        receipt.requisites = {FdRequisite(EFrDriver::CustomerAddress, QStringLiteral("+7"))};
        receipt.payments = {FrPayment(1, 1), FrPayment(0, 7), FrPayment(4, 3)};
        receipt.cashier = FrUser{QStringLiteral("Иванова"), {}, {}};
        receipt.total = 1000;
        receipt.paid = 1100;
    }

    IssueResult issue() { return issueReceipt(driver, receipt, {hexLine}); }

    BasicFrSettings settings;
    RecordingDriver driver{&settings};
    receipt::Receipt receipt;
};

const std::string filled
    = "openShift " + noting + " mark open requisite print position barcode total pay1 pay4 pay0";

TEST_F(Issue, ReceiptGoesInTheOrderOfTheContract)
{
    const IssueResult result = issue();
    EXPECT_EQ(driver.calls, filled + " close wait clear");
    EXPECT_EQ(driver.status, 1);
    EXPECT_FALSE(result.failure);
    EXPECT_TRUE(result.isFinal);
    EXPECT_EQ(result.verdict, Verdict(Outcome::Issued));
    EXPECT_EQ(result.change, 100);
    ASSERT_EQ(result.marks.size(), 1);
    EXPECT_EQ(result.marks.constFirst().markingCode, QStringLiteral("0104"));
    EXPECT_EQ(result.marks.constFirst().result, 15);
}

TEST_F(Issue, MarkBehindADocumentServesTheNext)
{
    const RegisterLine xmlLine{receipt::Protocol::Xml, true};
    const struct
    {
        RegisterLine line;
        bool isOfThisConnection;
        quint32 number;
        std::string calls;
        Verdict verdict;
    } rows[] = {
        {hexLine, true, 8, "openShift next sums", countedOn(9)},
        {hexLine, true, 9, "openShift next sums " + noting, Outcome::Issued},
        {hexLine, false, 8, "openShift " + noting, countedOn(9)},
        {receipt::Protocol::Hex, true, 8, "openShift " + noting, Outcome::Issued},
        {xmlLine, false, 8, "ask", countedOn(9)},
        {xmlLine, true, 9, "ask ask sums", countedOn(10)},
        {receipt::Protocol::Xml, true, 8, "ask sums", countedOn(9)},
    };
    for (const auto& row : rows) {
        driver.numbers = {7};
        DriveMark after = *issueReceipt(driver, receipt, {row.line}).after;
        after.lastDocument = 8;
        driver.calls.clear();
        driver.numbers = {row.number};
        IssueOptions options{row.line};
        options.known = KnownMark{after, row.isOfThisConnection};
        const IssueResult result = issueReceipt(driver, receipt, options);
        EXPECT_EQ(driver.calls.substr(0, driver.calls.find(" mark")), row.calls);
        EXPECT_EQ(result.verdict, row.verdict) << row.calls;
    }
}

TEST_F(Issue, MeasuredGoodsComeBackMeasured)
{
    receipt.document.setDocumentType(hw::fr::CheckSaleReturn);
    receipt.items[1].position.setFrUnit(11);
    issue();
    EXPECT_EQ(driver.status, 4);
}

TEST_F(Issue, CashierAndTaxSystemAreThoseOfTheReceiptElseTheOnlyOnes)
{
    using namespace hw::fr::common;
    const FrUser petrova{QStringLiteral("Петрова"), {}, {}};
    const FrUser nobody;
    const struct
    {
        FrUser receipts;
        FrUser configured;
        int system;
        QList<TaxSystemType> registered;
        const char* cashier;
        /// 0 when nothing is begun.
        int sold;
    } rows[] = {
        {petrova, *receipt.cashier, 4, {TaxSystemGeneral, TaxSystemPatent}, "Петрова", 4},
        {nobody, petrova, 0, {TaxSystemPatent}, "Петрова", TaxSystemPatent},
        {petrova, nobody, 0, {TaxSystemGeneral, TaxSystemPatent}, "Петрова", 0},
        {petrova, nobody, 0, {}, "Петрова", 0},
        {nobody, nobody, 4, {TaxSystemGeneral}, "", 0},
    };
    const receipt::Receipt plain = receipt;
    for (const auto& row : rows) {
        RecordingDriver fresh(&settings);
        fresh.registered = row.registered;
        receipt = plain;
        receipt.cashier = row.receipts.name.isEmpty() ? std::nullopt : std::optional(row.receipts);
        if (row.system != 0)
            receipt.requisites.append(FdRequisite(EFrDriver::TaxSystem, row.system));
        IssueOptions options{hexLine};
        options.cashier = row.configured;
        const IssueResult result = issueReceipt(fresh, receipt, options);
        EXPECT_EQ(fresh.cashier, QString::fromUtf8(row.cashier));
        EXPECT_EQ(fresh.taxSystem, row.sold);
        EXPECT_EQ(result.failure.has_value(), row.sold == 0);
        EXPECT_EQ(fresh.calls.empty(), row.sold == 0) << fresh.calls;
    }
}

TEST_F(Issue, WideAndHighIsWideWhereNoFontIsBoth)
{
    const std::tuple<EFrDriver::FontTypes, unsigned, EFrDriver::FontTypes> rows[] = {
        {EFrDriver::DoubleSizeFont, 24, EFrDriver::DoubleSizeFont},
        {EFrDriver::DoubleSizeFont, 44, EFrDriver::DoubleWidthFont},
        {EFrDriver::DoubleHeightFont, 44, EFrDriver::DoubleHeightFont},
    };
    for (const auto& [wanted, width, printed] : rows) {
        receipt.items[0].font = wanted;
        driver.widths = {{EFrDriver::NormalFont, 44}, {EFrDriver::DoubleSizeFont, width}};
        issue();
        EXPECT_EQ(driver.font, printed);
    }
}

TEST_F(Issue, BadMarksEndTheWorkBeforeADocument)
{
    const struct
    {
        int result;
        MarkPolicy policy;
        bool isIssued;
        int warnings;
    } rows[] = {
        {15, MarkPolicy::Strict, true, 0},
        {5, MarkPolicy::Warn, false, 0},
        {5, MarkPolicy::Any, true, 1},
        {3, MarkPolicy::Warn, true, 1},
        {3, MarkPolicy::Strict, false, 0},
    };
    for (const auto& row : rows) {
        driver.calls.clear();
        driver.markResult = row.result;
        const IssueResult result = issueReceipt(driver, receipt, {hexLine, nullptr, row.policy});
        EXPECT_EQ(result.isIssued(), row.isIssued) << row.result;
        EXPECT_EQ(result.warnings.size(), row.warnings) << row.result;
        if (row.isIssued)
            continue;
        EXPECT_EQ(driver.calls, "openShift " + noting + " mark clear");
        ASSERT_TRUE(result.failure);
        EXPECT_EQ(result.failure->kind, ErrorKind::Mark);
        EXPECT_EQ(result.failure->path, QStringLiteral("items[1].markingCode"));
        EXPECT_EQ(result.failure->bits, judgeMark(row.result).bits);
    }
}

TEST_F(Issue, MarkIsThatOfXmlUnlessToldOtherwise)
{
    issueReceipt(driver, receipt);
    EXPECT_EQ(driver.calls.rfind("ask sums mark", 0), 0U) << driver.calls;
}

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
    const std::string begun = "openShift " + noting + " mark open requisite print position barcode total";
    const Row rows[] = {
        {"openShift", false, "openShift", none, {}},
        {"sums", false, "openShift " + noting, none, {}},
        {"mark", false, "openShift " + noting + " mark clear", none, {}},
        {"mark", true, "openShift " + noting + " mark clear", none, {}},
        {"open cancel", false, "openShift " + noting + " mark open cancel clear", none, undone},
        {"total", false, begun + " cancel clear", Outcome::Cancelled, undone},
        {"total cancel", false, begun + " cancel", Outcome::NotCancelled, open},
        {"open", true, "openShift " + noting + " mark open cancel clear", Outcome::Cancelled, undone},
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

TEST_F(Issue, RefusesToOpenWhatNobodyCouldJudgeAfterwards)
{
    const struct
    {
        RegisterLine line;
        const char* drive;
        std::string calls;
    } rows[] = {{hexLine, "", "openShift " + noting}, {receipt::Protocol::Xml, "99", "ask sums ask sums"}};
    driver.numbers = {0};
    for (const auto& row : rows) {
        driver.calls.clear();
        driver.drive = QString::fromLatin1(row.drive);
        const IssueResult result = issueReceipt(driver, receipt, {row.line});
        EXPECT_EQ(driver.calls, row.calls);
        EXPECT_EQ(result.verdict, Outcome::None);
        ASSERT_TRUE(result.failure);
    }
}

TEST_F(Issue, WhatTheJournalKnowsIsAnsweredWithoutTheRegister)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    const DriveMark before{driver.drive, 7};
    const struct
    {
        std::optional<Verdict> settled;
        Verdict told;
        bool isFinal;
    } rows[] = {
        {Verdict(Outcome::Issued, 8), Verdict(Outcome::Issued, 8), true},
        {Verdict(Outcome::Unknown), Outcome::Unknown, true},
        // Begun, by another program or by one that ended.
        {std::nullopt, Outcome::Unknown, false},
    };
    int number = 0;
    for (const auto& row : rows) {
        // No JSON, and still another receipt under the same id is noticed.
        const QString id = QString::number(++number);
        IdentifiedSale identified(journal, id, "milk 10.00");
        identified.begin(before);
        if (row.settled)
            identified.settle(*row.settled);
        const IssueResult result = issueReceipt(driver, receipt, {hexLine, &identified});
        EXPECT_EQ(driver.calls, "");
        EXPECT_EQ(result.verdict, row.told);
        EXPECT_EQ(result.isFinal, row.isFinal);
        EXPECT_TRUE(result.isRepeated);
        EXPECT_EQ(result.before, before);
        EXPECT_THROW(IdentifiedSale(journal, id, "bread 10.00"), IdConflict);
    }
}

TEST_F(Issue, JournalKeepsWhatIsKnownBehindAReceipt)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    IdentifiedSale identified(journal, QStringLiteral("A"), "{}");
    driver.numbers = {1};
    const IssueResult result = issueReceipt(driver, receipt, {hexLine, &identified});
    ASSERT_TRUE(result.after);
    EXPECT_EQ(result.after->lastDocument, 2U);
    EXPECT_EQ(lastKnownMark(journal, {}), result.after);
}

TEST_F(Issue, PieceThatIsSoldTwiceIsNoticed)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    // The pieces' own codes, with other proofs behind them.
    const char* const piece = "010460000000001521ABCDEFGHIJKLM\x1D"
                              "93dGVz";
    const char* const scannedAgain = "010460000000001521ABCDEFGHIJKLM\x1D"
                                     "93AAAA";
    const char* const other = "010460000000001521ABCDEFGHIJKLN\x1D"
                              "93dGVz";
    const struct
    {
        const char* code;
        bool isReturn;
        const char* failing;
        const char* id;
        const char* warning;
    } rows[] = {
        {piece, false, "total", "1", ""},
        {piece, false, "", "2", ""},
        {other, false, "", "A", ""},
        {scannedAgain, false, "total", "B", "document 8"},
        {piece, true, "total", "3", ""},
        {other, false, "total", "4", "document 8"},
        {piece, false, "total", "5", "document 8"},
        // The return, at last.
        {piece, true, "", "3", ""},
        {piece, false, "close connect", "6", ""},
        {piece, false, "", "7", "may have been sold"},
    };
    int line = 0;
    for (const auto& row : rows) {
        driver.failing = row.failing;
        receipt.items[1].position.setMarkingCode(QString::fromLatin1(row.code), MarkCommon);
        receipt.document.setDocumentType(row.isReturn ? hw::fr::CheckSaleReturn : hw::fr::CheckSale);
        IdentifiedSale identified(journal, QString::fromLatin1(row.id), "{}");
        const IssueResult result = issueReceipt(driver, receipt, {RegisterLine(), &identified});
        ASSERT_EQ(result.warnings.size(), *row.warning == 0 ? 0 : 1) << line;
        for (const receipt::Finding& warning : result.warnings)
            EXPECT_TRUE(warning.reason.contains(QLatin1String(row.warning))) << warning.reason.toStdString();
        ++line;
    }
}

TEST_F(Issue, JournalThatFailsIsTold)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    IdentifiedSale identified(journal, QStringLiteral("A"), "{}");
    // Another program begins the same sale in the meantime.
    driver.onMark = [&] { identified.begin({driver.drive, 7}); };
    const IssueResult result = issueReceipt(driver, receipt, {receipt::Protocol::Hex, &identified});
    EXPECT_EQ(driver.calls, "openShift " + noting + " mark clear");
    EXPECT_EQ(result.verdict, Outcome::None);
    ASSERT_TRUE(result.failure);
    EXPECT_EQ(result.failure->exceptionName, QStringLiteral("JournalError"));
}

TEST(MarkJudgement, ReadsTheBits)
{
    using Standing = MarkJudgement::Standing;
    const struct
    {
        int result;
        Standing standing;
        const char* bits;
    } rows[] = {
        {0, Standing::Unchecked, "not checked by the fiscal drive, not checked on line"},
        {1, Standing::Bad, "key wrong, not checked on line"},
        {3, Standing::Unchecked, "key right, not checked on line"},
        {4, Standing::Bad, "not checked by the fiscal drive, goods wrong on line"},
        {7, Standing::Bad, "key right, goods wrong on line"},
        {10, Standing::Unchecked, "not checked by the fiscal drive, not checked on line"},
        {12, Standing::Unchecked, "not checked by the fiscal drive, goods right on line"},
        {13, Standing::Bad, "key wrong, goods right on line"},
        {15, Standing::Good, "key right, goods right on line"},
        {19, Standing::Unchecked, "key right, not checked on line, autonomous mode"},
        {-1, Standing::Unchecked, "not checked by the fiscal drive, not checked on line"},
        {33, Standing::Bad, "key wrong, not checked on line"},
        {47, Standing::Unchecked, "key right, goods right on line"},
    };
    for (const auto& row : rows) {
        const MarkJudgement judgement = judgeMark(row.result);
        const QStringList ends = QString::fromLatin1(row.bits).split(QStringLiteral(", "));
        EXPECT_EQ(judgement.standing, row.standing) << row.result;
        ASSERT_EQ(judgement.bits.size(), ends.size()) << row.result;
        for (qsizetype i = 0; i < ends.size(); ++i)
            EXPECT_TRUE(judgement.bits.at(i).endsWith(ends.at(i))) << judgement.bits.at(i).toStdString();
    }
}

} // namespace
