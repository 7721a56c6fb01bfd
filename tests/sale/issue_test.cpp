// A receipt on its way to the register.

#include "issuefixture.h"

using namespace sale;

namespace {

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
    // Without a word of the line it is asked as over XML.
    driver.calls.clear();
    issueReceipt(driver, receipt);
    EXPECT_EQ(driver.calls.rfind("ask sums mark", 0), 0U) << driver.calls;
    // Measured goods come back measured.
    receipt.document.setDocumentType(hw::fr::CheckSaleReturn);
    receipt.items[1].position.setFrUnit(11);
    issue();
    EXPECT_EQ(driver.status, 4);
}

TEST_F(Issue, MarkBehindADocumentServesTheNext)
{
    const RegisterLine xmlLine{receipt::Protocol::Xml, true};
    const std::tuple<RegisterLine, bool, quint32, std::string, Verdict> rows[] = {
        {hexLine, true, 8, "shift next sums", countedOn(9)},
        {hexLine, true, 9, "shift next sums registers next sums", Outcome::Issued},
        {hexLine, false, 8, noting, countedOn(9)},
        {receipt::Protocol::Hex, true, 8, noting, Outcome::Issued},
        {xmlLine, false, 8, "ask", countedOn(9)},
        {xmlLine, true, 9, "ask ask sums", countedOn(10)},
        {receipt::Protocol::Xml, true, 8, "ask sums", countedOn(9)},
    };
    for (const auto& [line, isOfThisConnection, number, calls, verdict] : rows) {
        driver.numbers = {7};
        DriveMark after = *issueReceipt(driver, receipt, {line}).after;
        after.lastDocument = 8;
        driver.calls.clear();
        driver.numbers = {number};
        IssueOptions options{line};
        options.known = KnownMark{after, isOfThisConnection};
        const IssueResult result = issueReceipt(driver, receipt, options);
        EXPECT_EQ(driver.calls.substr(0, driver.calls.find(" mark")), calls);
        EXPECT_EQ(result.verdict, verdict) << calls;
    }
}

TEST_F(Issue, CashierAndTaxSystemAreThoseOfTheReceiptElseTheOnlyOnes)
{
    using namespace hw::fr::common;
    const FrUser petrova{QStringLiteral("Петрова"), {}, {}};
    const FrUser nobody;
    // By which tax system it is sold is the last one, 0 when nothing is begun.
    const std::tuple<FrUser, FrUser, int, QList<TaxSystemType>, int> rows[] = {
        {petrova, *receipt.cashier, 4, {TaxSystemGeneral, TaxSystemPatent}, 4},
        {nobody, petrova, 0, {TaxSystemPatent}, TaxSystemPatent},
        {petrova, nobody, 0, {TaxSystemGeneral, TaxSystemPatent}, 0},
        {petrova, nobody, 0, {}, 0},
        {nobody, nobody, 4, {TaxSystemGeneral}, 0},
    };
    const receipt::Receipt plain = receipt;
    for (const auto& [ofReceipt, configured, system, registered, sold] : rows) {
        RecordingDriver fresh(&settings);
        fresh.registered = registered;
        receipt = plain;
        receipt.cashier = ofReceipt.name.isEmpty() ? std::nullopt : std::optional(ofReceipt);
        if (system != 0)
            receipt.requisites.append(FdRequisite(EFrDriver::TaxSystem, system));
        IssueOptions options{hexLine};
        options.cashier = configured;
        const IssueResult result = issueReceipt(fresh, receipt, options);
        EXPECT_EQ(fresh.cashier, receipt.cashier ? ofReceipt.name : configured.name);
        EXPECT_EQ(fresh.taxSystem, sold);
        EXPECT_EQ(result.failure.has_value(), sold == 0);
        EXPECT_EQ(fresh.calls.empty(), sold == 0) << fresh.calls;
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

} // namespace
