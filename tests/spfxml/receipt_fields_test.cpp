#include "scriptedfrspf.h"

namespace {

using namespace testing;
using Tag = EFrDriver::RequisiteTypes;
using PrintedDocument = ScriptedFrSpf;

std::string fields(const FrPosition& position, int type = hw::fr::CheckSale)
{
    return flat(ScriptedCommand().getPositionRequisites(position, static_cast<hw::fr::CheckType>(type)));
}

TEST(PositionRequisites, followTheMarkType)
{
    const std::string fur = "52552d3430313330312d41414130323737303331";
    FrPosition position;
    for (int type = -1; type <= 8; ++type) {
        position.setMarkingCode("RU-401301-AAA0277031", static_cast<ExciseMarkType>(type));
        const std::string goods = type == 2 ? "1309:1=" + fur.substr(0, 28) : "1307:1=" + fur;
        std::string expected = type == 0 ? "" : "2102:4=0 1163:7{" + goods + "} 2110:4=1 ";
        if (type >= 3 && type <= 7)
            expected += "2000:1=" + fur + " ";
        EXPECT_THAT(fields(position), HasSubstr("2108:4=0 " + expected + "PriceWithDiscount")) << type;
    }
    // A stamp that is too short goes as it is, in the code page of the fiscal drive.
    position.setMarkingCode("Я1", MarkAlcohol);
    for (int type = 0; type <= hw::fr::CheckCopy; ++type) {
        const std::string status = type == 0 ? "1" : type == 1 ? "3" : "255";
        EXPECT_THAT(fields(position, type), HasSubstr("{1309:1=9f31} 2110:4=" + status + " "));
        ScriptedCommand command;
        command.checkClose(static_cast<hw::fr::CheckType>(type), {}, {}, {}, {});
        EXPECT_THAT(command.sent.back(), HasSubstr(type == 1 ? " 1054:4=2 " : " 1054:4=1 ")) << type;
    }
}

TEST(PositionRequisites, fillWhatIsMissing)
{
    const std::string block = "ItemDiscounts:6{ItemDiscounts:7{Name:1=Скидка Value:2=";
    const std::tuple<double, std::string, FdRequisite, std::string> cases[] = {
        {0.006, block + "-0.01}} ", {Tag::SupplierInn, 7}, " 1224:7{1171:1= 1225:1=} 1222:1= 1226:1=7"},
        {-0.006, block + "0.01}} ", {Tag::SupplierData, QVariantMap{{"1171", 1}}},
            " 1224:7{1171:1=1 1225:1=} 1222:1= 1226:1="},
        {0.005, "", {Tag::AgentData, "x"}, ""},
        {-0.005, "", {Tag::IndustryRequisite, {}}, " 1260:7{1262:1= 1263:1= 1264:1= 1265:1=}"},
    };
    for (const auto& [discount, discounts, requisite, end] : cases) {
        FrPosition position("x", 1, 0);
        position.setDiscsum(discount);
        position.setRequisite(requisite);
        EXPECT_EQ(fields(position),
            "1030:1=x 1079:2=1.00 1197:1= 1023:3=0.000 1199:4=1 1212:4=1 1214:4=4 2108:4=0 " + discounts
                + "PriceWithDiscount:2=1.00" + end);
    }
}

FrPrintData font(int type)
{
    return FrPrintData::forSetFont({static_cast<EFrDriver::FontTypes>(type), EFrDriver::DoubleWidthFont});
}

TEST(Print, writesFontsAndBarcodesIntoTheText)
{
    const auto printed = [](const QList<FrPrintData>& data) {
        return spfxml::SpfFrCommand::getTextLines(data).join('|').toStdString();
    };
    const FrPrintData text = FrPrintData::forText({"a", "b"});
    const std::string modes[] = {"", "", "008", "", "032", "001", "016", "128", ""};
    for (int type = 0; type <= 8; ++type) {
        const std::string prefix = modes[type].empty() ? "" : "‼?f" + modes[type] + "0028";
        EXPECT_EQ(printed({font(type), text}), prefix + "a|" + prefix + "b") << type;
    }
    // The undefined font keeps that of the last text, not one that no text has used.
    EXPECT_EQ(printed({text, font(2), text, font(5), font(0), text, font(1), text, FrPrintData()}),
        "a|b|‼?f0080028a|‼?f0080028b|‼?f0080028a|‼?f0080028b|a|b");
    const QString longText(120, QChar(u'Ё'));
    const auto code = [](const QString& content, int type) { return FrPrintData::forBcode({content, type}); };
    EXPECT_EQ(printed({code("1", 2), code("1", 10), code(longText, 2), code(longText, 8)}),
        ("‼?b011|‼?b120" + longText + "|‼?q0120" + longText).toStdString());
}

TEST_F(PrintedDocument, isSentWhenItCloses)
{
    const MessageLog log;
    // Nothing was opened: the money goes in.
    driver.moneyCheckClose(0.5);
    driver.moneyCheckOpen(hw::fr::CheckCashOut, {});
    driver.moneyCheckPrint({"a"});
    driver.moneyCheckClose(1000);
    driver.textDocOpen(hw::fr::CheckNonFiscal);
    driver.textDocClose();
    driver.setFont({EFrDriver::SmallFont});
    driver.textDocPrint({"a"});
    driver.resetFont();
    driver.barcodePrint({"q", Barcode::Qr});
    driver.checkPrint({"b"});
    driver.textDocClose();
    EXPECT_THAT(MessageLog::taken(), Contains("info frdriver.spf_0: Закрытие чека выем, сумма 1000.00"));
    EXPECT_THAT(script->taken(),
        ElementsAre("38 x5 200007:7{1021:1= CashSumm:2=0.50 MoneyOperationType:4=1}",
            "38 x5 200007:7{1021:1= CashSumm:2=1000.00 MoneyOperationType:4=2 HeaderText:1=a}",
            "30 x5 200003:7{NonFiscalText:1=}", "30 x5 200003:7{NonFiscalText:1=‼?f0010028a\n‼?q0001q\nb}"));
}

} // namespace
