#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "errors.h"
#include "exceptions.h"
#include "receiptissuer.h"

#include <gtest/gtest.h>

using namespace frctl;

namespace {

/// Writes down the calls of a host; the one named throws.
class RecordingDriver : public BasicFrDriver
{
public:
    explicit RecordingDriver(BasicFrSettings* ownSettings)
        : BasicFrDriver(nullptr, QStringLiteral("test"), ownSettings)
    {
    }

    void connect() override { note("connect"); }
    void init() override { note("init"); }
    void openShift() override { note("openShift"); }
    FnInfo getFnInfo() override
    {
        note("ask");
        FnInfo info;
        info.fnStatus.fnNumber = QStringLiteral("9999");
        info.fnStatus.lastFdNumber = numbers.size() > 1 ? numbers.takeFirst() : numbers.constFirst();
        return info;
    }
    int checkMarkingCode(const MarkedPosition& position, bool) override
    {
        note("mark");
        status = position.status;
        return 15;
    }
    void clearMarkingCodes() override { note("clear"); }
    void checkOpen(const FiscalDocument&) override { note("open"); }
    void setRequisite(const FdRequisite&) override { note("requisite"); }
    void checkAddPosition(const FrPosition&) override { note("position"); }
    void checkPrint(const QList<QString>&) override { note("print"); }
    void barcodePrint(const Barcode&) override { note("barcode"); }
    void checkTotal() override { note("total"); }
    void checkPay(const FrPayment&) override { note("pay"); }
    QJsonObject checkClose(const FiscalDocument&) override
    {
        note("close");
        return {};
    }
    void checkCancel() override { note("cancel"); }
    void checkWaitForPrint() override { note("wait"); }

    std::string calls;
    std::string failing;
    bool interrupt = false;
    /// Of the drive's last document, from question to question.
    QList<quint32> numbers{7};
    int status = 0;

private:
    void note(const std::string& call)
    {
        calls += (calls.empty() ? "" : " ") + call;
        if ((" " + failing + " ").find(" " + call + " ") == std::string::npos)
            return;
        if (interrupt)
            throw Interrupted();
        throw FrPaperException(QStringLiteral("Нет бумаги"));
    }
};

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
        receipt.payments = {FrPayment(1, 4), FrPayment(0, 6)};
    }

    BasicFrSettings settings;
    RecordingDriver driver{&settings};
    Receipt receipt;
};

const std::string Filled = "openShift ask mark open requisite print position barcode total pay pay";

TEST_F(Issue, ReceiptGoesInTheOrderOfTheContract)
{
    issueReceipt(driver, receipt);
    EXPECT_EQ(driver.calls, Filled + " close wait clear");
    EXPECT_EQ(driver.status, 1);
}

TEST_F(Issue, MeasuredGoodsComeBackMeasured)
{
    receipt.document.setDocumentType(hw::fr::CheckSaleReturn);
    receipt.items[1].position.setFrUnit(11);
    issueReceipt(driver, receipt);
    EXPECT_EQ(driver.status, 4);
}

TEST_F(Issue, FailureDecidesWhatBecomesOfTheDocument)
{
    struct Row
    {
        const char* failing;
        bool interrupt;
        std::string calls;
        DocumentVerdict verdict;
        QList<quint32> numbers = {7};
    };
    const Row rows[] = {
        {"openShift", false, "openShift", {}},
        {"ask", false, "openShift ask", {}},
        {"mark", false, "openShift ask mark clear", {}},
        {"open cancel", false, "openShift ask mark open cancel clear", {}},
        {"total", false, "openShift ask mark open requisite print position barcode total cancel clear",
            DocumentOutcome::Cancelled},
        {"total cancel", false, "openShift ask mark open requisite print position barcode total cancel",
            DocumentOutcome::NotCancelled},
        {"total", true, "openShift ask mark open requisite print position barcode total",
            DocumentOutcome::NotCancelled},
        {"close", false, Filled + " close connect ask", {DocumentOutcome::Issued, 8}, {7, 8}},
        {"close", false, Filled + " close connect ask", DocumentOutcome::Unknown, {7, 9}},
        {"close", false, Filled + " close connect ask init ask clear", DocumentOutcome::NotIssued},
        {"close", false, Filled + " close connect ask init ask", {DocumentOutcome::Issued, 8}, {7, 7, 8}},
        {"close init", false, Filled + " close connect ask init", DocumentOutcome::Unknown},
        {"close connect", false, Filled + " close connect", DocumentOutcome::Unknown},
        {"close", true, Filled + " close", DocumentOutcome::Unknown},
        {"wait", false, Filled + " close wait", {DocumentOutcome::Issued, 8}},
    };
    for (const Row& row : rows) {
        driver.calls.clear();
        driver.failing = row.failing;
        driver.interrupt = row.interrupt;
        driver.numbers = row.numbers;
        DocumentVerdict verdict;
        try {
            issueReceipt(driver, receipt);
            ADD_FAILURE() << row.failing;
        } catch (const RegisterError& error) {
            verdict = error.verdict();
            EXPECT_EQ(error.exceptionName(), QStringLiteral("FrPaperException"));
            EXPECT_STREQ(error.what(), "Нет бумаги");
        } catch (const Interrupted& interrupted) {
            verdict = interrupted.verdict();
        } catch (const BasicException&) {
            // Before there is a document.
        }
        EXPECT_EQ(driver.calls, row.calls) << row.failing;
        EXPECT_EQ(verdict, row.verdict) << row.calls;
    }
}

} // namespace
