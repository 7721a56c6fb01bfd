#include "barcode.h"
#include "fiscaldocument.h"
#include "frparameter.h"
#include "frpayment.h"
#include "hexdriver.h"
#include "markedposition.h"
#include "registrationreason.h"

#include <QJsonObject>

#include <functional>

using namespace hw::fr;

namespace {

using Driver = HexDriver&;

const Barcode qrCode{"Код", Barcode::Qr, 3, 4, 5};
const Barcode code128{"Код", Barcode::Code128, 3, 4, 5};
const QStringList header{"ООО", "Ёж"};
const QList<common::TaxSystemType> systems{common::TaxSystemGeneral, common::TaxSystemPatent};

struct Operation
{
    std::function<void(HexDriver&)> call;
    const char* sent;
    const char* answers = "";
};

FiscalDocument returnReceipt()
{
    FiscalDocument document(CheckSaleReturn);
    document.setCashierName(QStringLiteral("Петр"));
    document.setCustomerAddress(QStringLiteral("Юрий@почта.рф"));
    document.setTaxSystem(common::TaxSystemSimplifiedIncomeOutcome);
    document.setPrintMode(CheckPrintNone);
    return document;
}

const QDateTime moment(QDate(2024, 2, 1), QTime(15, 30, 45));
const MarkedPosition measured{2, QStringLiteral("ABя"), 0.25, 11};
const MarkedPosition piece{3, QStringLiteral("0104600439931256215Qbag!93Zjqw"), 1.0, 0};

const std::vector<Operation> operations{
    {[](Driver d) { d.drawerOpen(); }, "80"},
    {[](Driver d) { EXPECT_FALSE(d.isCashDrawerOpened()); }, "A8", "A8=0"},
    {[](Driver d) { d.openShift(); }, "A0; 6B Анна Ким|7701|"},
    {[](Driver d) { d.openShift(); }, "A0", "A0=0|4|0"},
    {[](Driver d) { EXPECT_EQ(d.getFrDocNum(), "0012"); }, "A5 7|"},
    {[](Driver d) { EXPECT_TRUE(d.setDateTime(moment)); }, "A3 010224|153045|"},
    // Receipts
    {[](Driver d) { d.checkOpen({}); }, "C0 10|; 20 2|||7701||2||0|||"},
    {[](Driver d) { d.checkOpen(returnReceipt()); }, "20 3||{Петр}|7701||4|{Юрий@почта.рф}|1|||"},
    {[](Driver d) { EXPECT_TRUE(d.checkClose({}).isEmpty()); }, "22 0|1|0|"},
    {[](Driver d) { d.checkCancel(); }, "23"},
    {[](Driver d) { d.checkWaitForPrint(); }, "A0", "A0=0|4|1794"},
    {[](Driver d) { d.checkWaitForPrint(); }, "A0; 22 0|1|0|", "A0=0|4|2050"},
    {[](Driver d) { d.checkTotal(); }, "34"},
    {[](Driver d) { d.checkPay(FrPayment(4, 10.126)); }, "35 4|10.13|"},
    {[](Driver d) { d.checkPrint(QStringLiteral("Чай\n\t1 /\x01\x7F/").split('/')); },
        "21 {Чай1} |0|; 21 |0|; 21 |0|"},
    // Money and text documents
    {[](Driver d) { d.moneyCheckOpen(CheckCashIn, "x"); }, "C0 10|; 20 4||{Анна Ким}|7701||2||0|||"},
    {[](Driver d) { EXPECT_TRUE(d.moneyCheckClose(1500.5).isEmpty()); }, "36 |1500.50|; 22 0|1|0|"},
    {[](Driver d) { d.textDocOpen(CheckNonFiscal); }, "C0 10|; 20 1||{Анна Ким}|7701||2||0|||"},
    {[](Driver d) { d.barcodePrint(qrCode); }, "29 4|1|{Код}|"},
    {[](Driver d) { d.barcodePrint(code128); }, "24 3|4|5|8|{Код}|"},
    // Marking
    {[](Driver d) { EXPECT_EQ(d.checkMarkingCode(measured, false), 15); }, "3D 0|2|0.25|11|||4142ef|0|||",
        "3D=15"},
    {[](Driver d) { d.checkMarkingCode(piece, true); },
        "3D 0|3|1|0|||3031303436303034333939333132353632313551626167211d39335a6a7177|0|||"},
    {[](Driver d) { d.clearMarkingCodes(); }, "3F", "3F=refused"},
    // Registration and fiscal drive
    {[](Driver d) { d.registration(systems, {}, "x", {}, {}); },
        "C0; 08 |f4|f3|f0|{Анна Ким}||f5|f6|33|f11|f10|f7|f8|f1|f12|128|||"},
    {[](Driver d) { d.printFnDocument(4000000000L); }, "65 4000000000|"},
    // Reports
    {[](Driver d) { EXPECT_TRUE(d.xReport().isEmpty()); }, "60 {Анна Ким}|"},
    {[](Driver d) { EXPECT_TRUE(d.zReport().isEmpty()); }, "A0; 61 {Анна Ким}|7701|", "A0=0|4|0"},
    {[](Driver d) { EXPECT_TRUE(d.zReport().isEmpty()); }, "A0"},
    {[](Driver d) { d.accountingReport(); }, "A0; 6A {Анна Ким}|"},
    {[](Driver d) { EXPECT_TRUE(d.getCheckCounters(CheckSaleAnnulment).isEmpty()); }, ""},
    // Parameters, header, advertising text; values go as UTF-8
    {[](Driver d) { EXPECT_TRUE(d.setCliche(header)); }, "A2 20|0|ООО|; A2 20|1|Ёж|"},
    {[](Driver d) { EXPECT_FALSE(d.setTail(header)); }, "A2 21|0|ООО|", "A2=refused"},
    {[](Driver d) { d.clearGraphicCliche(); }, "E3"},
    {[](Driver d) { EXPECT_TRUE(d.setDefaults()); },
        "A2 4|0|0|; A2 5|0|0|; A2 6|0|1|; A2 8|0|0|; A2 11|0|0|; A2 13|0|0|; A2 30|0|1|; A2 38|0|1|; "
        "A2 40|0|0|"},
};

} // namespace

TEST_F(HexDriverTest, operationsSendTheirFrames)
{
    const auto usual = device.answers;
    for (const Operation& operation : operations) {
        device.answer(operation.answers);
        operation.call(driver);
        EXPECT_EQ(driver.sent(), wire(operation.sent)) << operation.sent << ", answers " << operation.answers;
        device.answers = usual;
    }
}

TEST_F(HexDriverTest, whatCannotBeDoneIsRefusedBeforeAnythingFurtherIsSent)
{
    const char* const badAnswer = "FrCommandException: Некорректный ответ от ФР";
    const char* const tenSums = "A5 14|=1|2|3|4|5|6|7|8|9|10";
    using Row = std::tuple<std::function<void(HexDriver&)>, const char*, const char*, const char*>;
    const std::vector<Row> table{
        {[](Driver d) { d.checkOpen(FiscalDocument(CheckCashIn)); }, "", "",
            "FrCommandException: Тип чека не поддерживается ФР"},
        {[](Driver d) { d.checkPay(FrPayment(5, 1.0)); }, "", "",
            "FrCommandException: Тип оплаты не поддерживается ФР"},
        {[](Driver d) { d.accountingReport(); }, "A0=0|4|0", "A0",
            "FrCommandException: Смена должна быть закрыта"},
        // Answers that are a field short, and one without a tax system
        {[](Driver d) { d.init(); }, "A0=0|1|0; A7=010224", "A0; A7", badAnswer},
        {[](Driver d) { d.getFnStateDescription(); }, "A4=3|1|0|1", "A4", badAnswer},
        {[](Driver d) { d.recorder->getIsmNotSentCount(); }, "A4 14|=1|2|3|4|5|6", "A4 14|", badAnswer},
        {[](Driver d) { d.registration({}, {}, {}, {}, {}); }, "C0=1|2|3|4|5|6|7|8|9|10|11|12", "C0",
            badAnswer},
        {[](Driver d) { d.getMoneyCounters(CheckCashOut); }, tenSums, "A5 13|; A5 14|", badAnswer},
        {[](Driver d) { d.getKkmRegisterEnd(); }, "A5 4|=1|2|3|4", "A5 13|; A5 14|; A5 3|; A5 4|", badAnswer},
        {[](Driver d) { d.getCountersDescription(); }, "A5 4|=refused", "A5 3|; A5 4|",
            "FrCommandException: Отказ"},
    };
    const auto usual = device.answers;
    for (const auto& [call, answers, sent, exception] : table) {
        SCOPED_TRACE(std::string(sent) + ", answers " + answers);
        device.answer(answers);
        EXPECT_EQ(thrown([&call = call, this] { call(driver); }), exception);
        EXPECT_EQ(driver.sent(), sent);
        device.answers = usual;
    }
    EXPECT_THAT(logged(), testing::EndsWith("e Отказ"));
}
