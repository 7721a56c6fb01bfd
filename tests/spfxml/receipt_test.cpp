#include "scriptedfrspf.h"

#include <frpayment.h>
#include <fruser.h>

namespace {

using namespace testing;
using Tag = EFrDriver::RequisiteTypes;
using Receipt = ScriptedFrSpf;

FrPosition positionWithEverything()
{
    FrPosition position("Молоко", 60, 2);
    position.setMeasureName("шт");
    position.setDiscsum(10);
    position.setTaxCode(2);
    position.setPaymentObject(33);
    position.setPaymentMethod(3);
    position.setFrUnit(11);
    position.setMarkingCode(QString::fromUtf8("010460123456789321Z\u001d93dGVz"), MarkCommon);
    for (const unsigned tag : {1231u, 1230u, 1222u, 1226u})
        position.setRequisite({static_cast<Tag>(tag), tag * 2});
    position.setRequisite({Tag::SupplierData, QVariantMap{{"1225", "Ферма"}, {"1171", "+71"}}});
    position.setRequisite({Tag::AgentData, QVariantMap{{"1073", "+72"}, {"1005", "Тверь"}}});
    position.setRequisite({Tag::IndustryRequisite, QVariantMap{{"1265", "id=1"}, {"1262", "030"}}});
    return position;
}

TEST_F(Receipt, goesOutAsOneTree)
{
    const MessageLog log;
    FiscalDocument document;
    document.setPrintMode(CheckPrintNone);
    driver.cashierLogin({"Ёлкина", "", "77"});
    script->setTail({"Ждём", "вас"});
    driver.checkOpen(document);
    driver.checkAddPosition(positionWithEverything());
    for (const unsigned tag : {1008u, 1171u, 1187u, 1192u, 1203u, 1008u, 1021u})
        driver.setRequisite({static_cast<Tag>(tag), tag});
    EXPECT_EQ(MessageLog::taken().back(), "warn frdriver.spf_0: Тип реквизита не поддерживается");
    driver.setRequisite({Tag::CustomerBlock, QVariantMap{{"1228", "500"}}});
    driver.setRequisite({Tag::TaxSystem, 2});
    for (const auto& [kind, sum] : {std::pair{0, 100.0}, {1, 50}, {0, 50}, {2, 1}, {3, 2}, {4, 3}, {5, 1000}})
        driver.checkPay({kind, sum});
    driver.setFont({EFrDriver::DoubleSizeFont});
    driver.checkPrint({"Чек"});
    driver.barcodePrint({"4601234567893", Barcode::Ean13});
    driver.barcodePrint({"X", Barcode::Code128});
    EXPECT_EQ(
        MessageLog::taken().back(), "error frdriver.spf_0: Тип штрих-кода CODE 128 не поддерживается ФР");
    EXPECT_TRUE(driver.checkClose(document).isEmpty());
    EXPECT_THAT(script->taken(),
        ElementsAre(
            "8 x1 3:7{1059:6{1059:7{1030:1=Молоко 1079:2=60.00 1197:1=шт 1023:3=2.000 "
            "1199:4=2 1212:4=33 1214:4=3 2108:4=11 2102:4=0 1163:7{1305:1=3031303436303132333435363738393332315a} 2110:4=1 "
            "2000:1=3031303436303132333435363738393332315a1d39336447567a "
            "ItemDiscounts:6{ItemDiscounts:7{Name:1=Скидка Value:2=-10.00}} "
            "PriceWithDiscount:2=55.00 1224:7{1171:1=+71 1225:1=Ферма} 1222:1=2444 1226:1=2452 "
            "1223:7{1005:1=Тверь 1073:1=+72} 1260:7{1262:1=030 1263:1= 1264:1= 1265:1=id=1} 1230:1=2460 "
            "1231:1=2462}} 1031:2=54.00 1081:2=50.00 1215:2=1.00 1216:2=2.00 "
            "1217:2=3.00 1021:1=Ёлкина 1054:4=1 DoNotPrint:4=1 1203:1=77 1008:1=1008 1171:1=1171 1187:1=1187 1192:1=1192 1203:1=1203 1008:1=1008 "
            "1256:7{1227:1= 1228:1=500} 1055:4=2 HeaderText:1=‼?f0080028Чек\n‼?b134601234567893 "
            "Footer:1=СДАЧА: 96.00 TextAfterDoc:1=Ждём\nвас}"));
}

TEST_F(Receipt, givesTheChangeOutOfTheCash)
{
    const std::tuple<double, QMap<int, double>, const char*, const char*> cases[] = {
        {100, {{0, 100}, {5, 60}}, "100.00", "0.00"},
        {100, {{0, 10}, {1, 20}, {2, 30}, {3, 40}, {4, 50}}, "-40.00", "50.00"},
        // The limit itself is not enough.
        {0, {{0, 0.005}}, "0.01", "0.01"},
        {0, {{0, 0.0051}}, "0.00", "0.01"},
    };
    for (const auto& [total, payments, cash, change] : cases) {
        script->checkClose(hw::fr::CheckSale, payments, {FrPosition("", total, 1)}, {}, {});
        EXPECT_THAT(script->taken().back(),
            AllOf(HasSubstr(std::string("} 1031:2=") + cash + " "),
                EndsWith(std::string("Footer:1=СДАЧА: ") + change + "}")));
    }
}

TEST_F(Receipt, staysAsItWasWhenItFails)
{
    driver.checkOpen(sale);
    driver.checkAddPosition(FrPosition("x", 1, 1));
    driver.checkPay({0, 1});
    const MessageLog log;
    script->failing = 8;
    EXPECT_EQ(thrown([&] { driver.checkClose(sale); }), "FrWaitForPaperException: Отказ");
    EXPECT_EQ(MessageLog::taken().back(), "error frdriver.spf_0: Отказ");
    // A shift that cannot be opened leaves all as it was, too.
    script->failing = 44;
    EXPECT_EQ(thrown([&] { driver.checkOpen(sale); }), "FrWaitForPaperException: Отказ");
    driver.checkClose(sale);
    EXPECT_THAT(script->taken().back(), MatchesRegex(".*:1=x .* 1031:2=1.00 .*=0 1055:4=2 1055:4=2 Foo.*"));
    // The next one is sent empty; of the requisites set before its opening only the tax system stays.
    driver.setRequisite({Tag::TaxSystem, "16"});
    script->failing = 0;
    driver.textDocPrint({"x"});
    driver.setRequisite({Tag::SettlementPlace, "x"});
    driver.checkOpen(FiscalDocument(hw::fr::CheckCopy));
    driver.checkClose(sale);
    EXPECT_THAT(
        script->taken().back(), MatchesRegex(".*:6.. 1031:2=0.00 .*=0 1055:4=16 Footer:1=СДАЧА: 0.00}"));
    EXPECT_THAT(MessageLog::taken(), Contains("info frdriver.spf_0: Открытие чека неизвестного типа чека"));
}

TEST_F(Receipt, doesNotGoOutWithoutATaxSystem)
{
    const MessageLog log;
    for (const char* answer : {"<a><pa n='1062'>0</pa></a>", "<a><pa n='1055'>1</pa></a>", "<a>1062</a>"}) {
        script->answers[50] = answer;
        EXPECT_EQ(thrown([&] { driver.checkClose(sale); }), "FrCommandException: Некорректный ответ от ФР");
        EXPECT_THAT(script->taken(), ElementsAre("50 x5 "));
    }
    // Only what comes out of the receipt itself is logged by the driver.
    EXPECT_THAT(MessageLog::taken(), Each(Not(StartsWith("error frdriver.spf"))));
}

} // namespace
