#include "barcode.h"
#include "frposition.h"
#include "hexdriver.h"
#include "markedposition.h"

using namespace hw::fr;

namespace {

QString letters(qsizetype count)
{
    return QString(count, QLatin1Char('x'));
}

/// Fields that were cut to these lengths.
std::string cut(const QList<int>& lengths)
{
    QString fields;
    for (const int length : lengths)
        fields += letters(length) + '|';
    return fields.toStdString();
}

FrPosition withRequisites(const QMap<int, QVariant>& requisites)
{
    FrPosition position(QStringLiteral("Чай"), 100.0, 1.5);
    for (auto one = requisites.cbegin(); one != requisites.cend(); ++one)
        position.setRequisite({static_cast<EFrDriver::RequisiteTypes>(one.key()), one.value()});
    return position;
}

/// Every text is too long.
FrPosition longPosition()
{
    const QString text = letters(300);
    const QVariantMap industry{{"1262", "0301"}, {"1263", "01.02.2024"}, {"1264", text}, {"1265", text}};
    const QVariantMap agent{{"1044", text}, {"1073", text}, {"1026", text}, {"1005", text}, {"1075", text},
        {"1016", text}, {"1074", text}};
    FrPosition position = withRequisites({{1230, "6431"}, {1231, text}, {1260, industry}, {1222, "64"},
        {1223, agent}, {1224, QVariantMap{{"1171", text}, {"1225", text}}}, {1226, text}});
    position.setName(QString(49, QChar(0x416)));
    position.setBarcode(QStringLiteral("12345678901234"));
    position.setCount(2.0);
    position.setDiscsum(10.0);
    position.setTaxCode(3);
    position.setPaymentMethod(7);
    position.setPaymentObject(33);
    position.setFrUnit(11);
    position.setMarkingCode(QStringLiteral("0104600439931256215Qbag!93Zjqw"), MarkTobacco);
    return position;
}

} // namespace

TEST_F(HexDriverTest, positionsAreSentFieldByField)
{
    const std::string bare = "30 {Чай}||1.500|100.00|0|0||4|||||0|0|2|||||||||";
    FrPosition negative = withRequisites({});
    negative.setPaymentMethod(-1);
    FrPosition free = withRequisites({});
    free.setDiscsum(150.001);
    const std::vector<std::pair<FrPosition, std::string>> table{
        {withRequisites({}), bare},
        {free, "30 {Чай}||1.500|0.00|0|0||4|||||0|0|2|||||||||"},
        {negative, bare},
        {withRequisites({{1260, QVariantMap{{"1263", "2024-02-01"}, {"1264", "Ж-1"}}}}),
            "30 {Чай}||1.500|100.00|0|0||4|||||0|0|2||||Ж-1|||||"},
        {withRequisites({{1224, QVariantMap{{"1171", "8800"}, {"1225", "ООО"}}}}),
            "3C ||||||||8800|ООО||; " + bare},
        {withRequisites({{1222, 64}}), "3C 64|||||||||||; " + bare},
        {withRequisites({{1223, QVariantMap{{"1044", "приём"}}}}), "3C |приём||||||||||; " + bare},
        {longPosition(),
            "3C 64|" + cut({24, 19, 64, 256, 19, 12, 19, 19, 19, 12})
                + "; 41 0104600439931256215Qbag!\x1D\x39\x33Zjqw|0||255|; 30 {"
                + QString(48, QChar(0x416)).toStdString() + "}|1234567890123|2.000|95.00|0|3||7|||643|"
                + cut({32}) + "33|11|2||030|010224|" + cut({32, 256}) + "|||"},
    };
    for (const auto& [position, sent] : table) {
        driver.checkAddPosition(position);
        EXPECT_EQ(driver.sent(), wire(sent));
        EXPECT_EQ(driver.agentDataBound, sent.starts_with("3C"));
    }
    driver.checkOpen({});
    EXPECT_FALSE(driver.agentDataBound);
}

// No check is ever kept, but what stood in the memory would be used.
TEST_F(HexDriverTest, theMemoryOfCheckedCodesIsReadAndNeverFilled)
{
    const MarkedPosition marked{1, QStringLiteral("ABC"), 1.0, 0};
    device.answer(QStringLiteral("3D=15"));
    EXPECT_EQ(driver.checkMarkingCode(marked, false), 15);
    EXPECT_TRUE(driver.checkedMarkingCodes.isEmpty());
    driver.checkedMarkingCodes[marked.markingCode] = 7;
    EXPECT_EQ(driver.checkMarkingCode(marked, false), 7);
    EXPECT_EQ(driver.checkMarkingCode(marked, true), 15);
    driver.sent();

    FrPosition position;
    position.setMarkingCode(marked.markingCode, MarkCommon);
    driver.checkAddPosition(position);
    EXPECT_EQ(driver.sent(), "41 ABC|0||255|; 30 ||1.000|0.00|0|0||4|||||0|0|2|7||||||||");

    for (const char* const failure : {"3F=port fault", "3F=refused"}) {
        device.answer(failure);
        const bool isSwallowed = thrown([this] { driver.clearMarkingCodes(); }).empty();
        EXPECT_EQ(driver.checkedMarkingCodes.isEmpty(), isSwallowed);
    }
    EXPECT_TRUE(driver.checkedMarkingCodes.isEmpty());
}

TEST_F(HexDriverTest, documentTypesBarcodeTypesAndFontsHaveTheDevicesCodes)
{
    int type = 0;
    for (const char* const code : {"2", "3", "0", "0", "0", "0", "0", "4", "5", "0", "0", "1", "1", "0"}) {
        driver.textDocOpen(static_cast<CheckType>(type++));
        EXPECT_EQ(driver.sent().substr(8, 6), std::string("20 ") + code + "||");
    }
    type = 0;
    for (const char* const code : {"0", "1", "2", "3", "4", "5", "6", "7", "qr", "7", "8", "11"}) {
        driver.barcodePrint({letters(300), type++, 1, 2, 3});
        EXPECT_EQ(driver.sent(),
            *code == 'q' ? "29 2|1|" + cut({256}) : std::string("24 1|2|3|") + code + '|' + cut({300}));
    }
    int font = 0;
    const std::string line = std::string("21 ").append(256, '\xEF');
    for (const char* const attribute : {"0", "0", "48", "1", "32", "1", "16", "128", "0"}) {
        driver.setFont({static_cast<EFrDriver::FontTypes>(font++), EFrDriver::DoubleWidthFont});
        driver.checkPrint({QString(300, QChar(0x44F))});
        EXPECT_EQ(driver.sent(), line + '|' + attribute + '|');
    }
    driver.setFont({EFrDriver::DoubleWidthFont});
    driver.resetFont();
    driver.checkPrint({QString()});
    EXPECT_EQ(driver.sent(), "21 |0|");
}
