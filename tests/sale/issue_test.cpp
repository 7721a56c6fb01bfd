#include "idconflict.h"
#include "identifiedsale.h"
#include "receiptissuer.h"
#include "recordingdriver.h"
#include "salejournal.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace sale;
using receipt::ReceiptItem;

namespace {

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
        receipt.payments = {FrPayment(1, 4), FrPayment(0, 7)};
        receipt.total = 1000;
        receipt.paid = 1100;
    }

    IssueResult issue() { return issueReceipt(driver, receipt, {MarkReading::Once}); }

    BasicFrSettings settings;
    RecordingDriver driver{&settings};
    receipt::Receipt receipt;
};

const std::string filled = "openShift ask mark open requisite print position barcode total pay pay";

TEST_F(Issue, ReceiptGoesInTheOrderOfTheContract)
{
    const IssueResult result = issue();
    EXPECT_EQ(driver.calls, filled + " close wait clear");
    EXPECT_EQ(driver.status, 1);
    EXPECT_FALSE(result.failure);
    EXPECT_TRUE(result.isFinal);
    EXPECT_EQ(result.verdict, Verdict(Outcome::Issued, 8));
    EXPECT_EQ(result.change, 100);
    ASSERT_EQ(result.marks.size(), 1);
    EXPECT_EQ(result.marks.constFirst().markingCode, QStringLiteral("0104"));
    EXPECT_EQ(result.marks.constFirst().result, 15);
}

TEST_F(Issue, MeasuredGoodsComeBackMeasured)
{
    receipt.document.setDocumentType(hw::fr::CheckSaleReturn);
    receipt.items[1].position.setFrUnit(11);
    issue();
    EXPECT_EQ(driver.status, 4);
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

TEST_F(Issue, MarkIsReadWithCareUnlessToldOtherwise)
{
    issueReceipt(driver, receipt);
    EXPECT_EQ(driver.calls.rfind("openShift ask ask mark", 0), 0U) << driver.calls;
}

TEST_F(Issue, FailureDecidesWhatBecomesOfTheDocument)
{
    struct Row
    {
        const char* failing;
        bool interrupt;
        std::string calls;
        Verdict verdict;
        /// In the journal, None for a sale that the next run settles.
        Outcome stored;
        QList<quint32> numbers = {7};
    };
    constexpr Outcome none = Outcome::None;
    constexpr Outcome undone = Outcome::NotIssued;
    const std::string begun = "openShift ask mark open requisite print position barcode total";
    const Row rows[] = {
        {"openShift", false, "openShift", none, undone},
        {"ask", false, "openShift ask", none, undone},
        {"mark", false, "openShift ask mark clear", none, undone},
        {"mark", true, "openShift ask mark clear", none, undone},
        {"open cancel", false, "openShift ask mark open cancel clear", none, undone},
        {"total", false, begun + " cancel clear", Outcome::Cancelled, undone},
        {"total cancel", false, begun + " cancel", Outcome::NotCancelled, none},
        {"open", true, "openShift ask mark open cancel clear", Outcome::Cancelled, undone},
        {"total", true, begun + " cancel clear", Outcome::Cancelled, undone},
        {"total cancel", true, begun + " cancel", Outcome::NotCancelled, none},
        {"close", false, filled + " close connect ask", {Outcome::Issued, 8}, Outcome::Issued, {7, 8}},
        {"close", false, filled + " close connect ask", Outcome::Unknown, Outcome::Unknown, {7, 9}},
        {"close", false, filled + " close connect ask init ask clear", Outcome::NotIssued, undone},
        {"close", false, filled + " close connect ask init ask", {Outcome::Issued, 8}, Outcome::Issued,
            {7, 7, 8}},
        {"close init", false, filled + " close connect ask init", Outcome::Unknown, none},
        {"close connect", false, filled + " close connect", Outcome::Unknown, none},
        {"close", true, filled + " close", Outcome::Unknown, none},
        {"wait", false, filled + " close wait", {Outcome::Issued, 8}, Outcome::Issued},
        {"wait", true, filled + " close wait", {Outcome::Issued, 8}, Outcome::Issued},
    };
    const QTemporaryDir folder;
    int number = 0;
    for (const Row& row : rows) {
        SaleJournal journal(folder.filePath(QString::number(++number)));
        IdentifiedSale identified(journal, QStringLiteral("A"), "{}");
        driver.calls.clear();
        driver.failing = row.failing;
        driver.interrupt = row.interrupt;
        driver.numbers = row.numbers;
        const IssueResult result = issueReceipt(driver, receipt, {MarkReading::Once, &identified});
        EXPECT_EQ(driver.calls, row.calls) << row.failing;
        EXPECT_EQ(result.verdict, row.verdict) << row.calls;
        EXPECT_EQ(identified.record().verdict.outcome, row.stored) << row.calls;
        EXPECT_EQ(result.isFinal, row.stored != none || row.verdict.outcome == Outcome::Issued) << row.calls;
        ASSERT_TRUE(result.failure) << row.calls;
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
    for (const bool hasDrive : {true, false}) {
        driver.calls.clear();
        driver.drive = hasDrive ? QStringLiteral("99") : QString();
        driver.numbers = {hasDrive ? 0U : 7U};
        const IssueResult result = issue();
        EXPECT_EQ(driver.calls, "openShift ask");
        EXPECT_EQ(result.verdict, Outcome::None);
        ASSERT_TRUE(result.failure);
    }
}

TEST_F(Issue, WhatTheJournalKnowsIsAnsweredWithoutTheRegister)
{
    const QTemporaryDir folder;
    SaleJournal journal(folder.filePath(QStringLiteral("sales")));
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
        const IssueResult result = issueReceipt(driver, receipt, {MarkReading::Once, &identified});
        EXPECT_EQ(driver.calls, "");
        EXPECT_EQ(result.verdict, row.told);
        EXPECT_EQ(result.isFinal, row.isFinal);
        EXPECT_TRUE(result.isRepeated);
        EXPECT_EQ(result.before, before);
        EXPECT_THROW(IdentifiedSale(journal, id, "bread 10.00"), IdConflict);
    }
}

TEST_F(Issue, JournalThatFailsIsTold)
{
    const QTemporaryDir folder;
    SaleJournal journal(folder.filePath(QStringLiteral("sales")));
    IdentifiedSale identified(journal, QStringLiteral("A"), "{}");
    // Another program begins the same sale in the meantime.
    driver.onMark = [&] { identified.begin({driver.drive, 7}); };
    const IssueResult result = issueReceipt(driver, receipt, {MarkReading::Once, &identified});
    EXPECT_EQ(driver.calls, "openShift ask mark clear");
    EXPECT_EQ(result.verdict, Outcome::None);
    ASSERT_TRUE(result.failure);
    EXPECT_EQ(result.failure->exceptionName, QStringLiteral("JournalError"));
}

} // namespace
