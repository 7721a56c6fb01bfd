#include "keyboardlayout.h"
#include "marksyntax.h"
#include "receiptpatch.h"
#include "taxnumber.h"

#include <gtest/gtest.h>

using namespace receipt;

namespace {

TEST(TaxNumber, CheckDigitsAreWeighed)
{
    const std::pair<const char*, bool> rows[]
        = {{"7721000017", true}, {"7721000018", false}, {"7712000017", false}, {"772100000040", true},
            {"772100000041", false}, {"772100000050", false}, {"000000000000", true}, {"772100001", false},
            {"77210000170", false}, {"", false}, {"772100001٧", false}};
    for (const auto& [number, isRight] : rows)
        EXPECT_EQ(isInn(QString::fromUtf8(number)), isRight) << number;
}

/// What the rules say of a receipt.
std::string said(const QJsonObject& json, Protocol protocol = Protocol::Xml, QDate today = {2025, 12, 31})
{
    return findingsOf(checkedReceipt(QJsonDocument(json).toJson(), {protocol, today, {}, true}));
}

struct Row
{
    const char* head;
    const char* item;
    /// Beginnings of what is said, in this order; nothing else may be.
    QList<const char*> expected;
};

void expectSaid(const Row& row, Protocol protocol = Protocol::Xml, QDate today = {2025, 12, 31})
{
    const std::string text = said(receiptWith(row.head, row.item), protocol, today);
    const QStringList lines = QString::fromStdString(text).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), row.expected.size()) << row.head << row.item << '\n' << text;
    for (qsizetype index = 0; index < lines.size(); ++index)
        EXPECT_TRUE(lines.at(index).startsWith(QString::fromUtf8(row.expected.at(index)))) << text;
}

TEST(Rules, PeopleAgentsAndAdvances)
{
    const Row rows[] = {
        {"{}", "{}", {}},
        {R"({"electronically": true})", "{}", {"E clientInfo.emailOrPhone: is missing"}},
        {R"({"electronically": true, "clientInfo": {"name": "А"}})", "{}",
            {"E clientInfo.emailOrPhone: ",
                "W clientInfo.vatin: is missing: over XML tag 1228 goes out empty"}},
        {R"({"clientInfo": {"vatin": "7721000024"}})", "{}",
            {"W clientInfo.name: is missing: over XML tag 1227"}},
        {R"({"electronically": true, "clientInfo": {"emailOrPhone": "+79990001122"}})", "{}", {}},
        {R"({"operator": {"name": "А", "vatin": "772100000041"},
            "clientInfo": {"name": "Б", "vatin": "7721000025"}})",
            R"({"agentInfo": {"agents": ["another"], "moneyTransferOperator": {"vatin": "7721000026"}},
                "supplierInfo": {"name": "В", "phones": ["1"], "vatin": "7721000027"}})",
            {"W operator.vatin: \"772100000041\" has wrong check digits",
                "W clientInfo.vatin: \"7721000025\" ",
                "W items[0].agentInfo.moneyTransferOperator.vatin: \"7721000026\" ",
                "W items[0].supplierInfo.vatin: \"7721000027\" "}},
        {"{}", R"({"agentInfo": {"agents": ["attorney"]}})",
            {"E items[0].supplierInfo.vatin: is missing: an agent's goods",
                "W items[0].supplierInfo.phones: is missing: over XML tag 1171 goes out empty",
                "W items[0].supplierInfo.name: "}},
        {"{}", R"({"agentInfo": {"agents": ["attorney"]}, "supplierInfo": {"name": "А", "phones": ["1"]}})",
            {"E items[0].supplierInfo.vatin: is missing"}},
        {"{}", R"({"agentInfo": {"agents": ["attorney"]},
            "supplierInfo": {"name": "А", "phones": ["1"], "vatin": "000000000000"}})",
            {}},
        {"{}", R"({"supplierInfo": {"name": "А", "vatin": "7721000017"}})",
            {"W items[0].agentInfo: is missing"}},
        // Both halves of a split position are one line of the file.
        {"{}",
            R"({"agentInfo": {"agents": ["attorney"]}, "supplierInfo": {"name": "А", "phones": ["1"]}, "price": 10,
            "quantity": 3, "infoDiscountAmount": 1, "amount": 29})",
            {"E items[0].supplierInfo.vatin: is missing"}},
        // An advance is settled by what was prepaid.
        {"{}", R"({"paymentObject": "payment"})",
            {"W items[0].paymentMethod: \"fullPayment\" settles an advance"}},
        {R"({"payments": [{"type": "prepaid", "sum": 100}]})", R"({"paymentObject": "payment"})", {}},
        {"{}", R"({"paymentObject": "payment", "paymentMethod": "advance"})", {}},
    };
    for (const Row& row : rows)
        expectSaid(row);
    const Row longName{R"({"operator": {"name": "1234567890123456789012345678901234567890123456789"}})", "{}",
        {"W operator.name: \"1234567890123456789012345678901234567890123456789\" is whole in the receipt, but is "
         "cut to 48 characters over HEX in a shift that the receipt opens; is sent there as \"123456789012345678"
         "901234567890123456789012345678\""}};
    expectSaid(longName, Protocol::Hex);
    expectSaid({longName.head, longName.item, {}});
}

TEST(Rules, PositionsAreNotTooMany)
{
    QJsonObject receipt = receiptWith(R"({"payments": [{"type": "cash", "sum": 200000}]})", "{}");
    QJsonArray items = receipt.value("items").toArray();
    while (items.size() < 1000)
        items.append(items.at(0));
    receipt.insert("items", items);
    EXPECT_EQ(said(receipt), "");
    items.append(items.at(0));
    receipt.insert("items", items);
    EXPECT_EQ(said(receipt).rfind("W items: has 1001 positions", 0), 0U) << said(receipt);
}

TEST(Rules, RatesOfTheDay)
{
    const QDate today(2026, 1, 1);
    expectSaid({"{}", "{}", {"W items[0].tax.type: \"vat20\" ended with 2025: a sale has vat22"}},
        Protocol::Hex, today);
    expectSaid({"{}", R"({"tax": {"type": "vat120"}})",
                   {"W items[0].tax.type: \"vat120\" ended with 2025: a sale has vat122"}},
        Protocol::Xml, today);
    expectSaid({R"({"type": "sellReturn"})", "{}", {}}, Protocol::Xml, today);
    expectSaid({"{}", R"({"tax": {"type": "vat22"}})", {}}, Protocol::Xml, today);
}

/// Positions and payments by method and kind: "advance 60 fullPayment 40 | cash 100".
QJsonObject settled(const char* text)
{
    const QStringList sides = QString::fromLatin1(text).split(QStringLiteral(" | "));
    const auto pairs
        = [](const QString& side, const std::function<QJsonObject(const QString&, double)>& entry) {
              QJsonArray entries;
              const QStringList words = side.split(' ');
              for (qsizetype index = 0; index + 1 < words.size(); index += 2)
                  entries.append(entry(words.at(index), words.at(index + 1).toDouble()));
              return entries;
          };
    QJsonObject json{{"type", "sell"}};
    json["items"] = pairs(sides.at(0), [](const QString& method, double sum) {
        return QJsonObject{{"name", "А"}, {"price", sum}, {"quantity", 1}, {"amount", sum},
            {"tax", QJsonObject{{"type", "none"}}}, {"paymentMethod", method}};
    });
    json["payments"] = pairs(sides.at(1), [](const QString& kind, double sum) {
        return QJsonObject{{"type", kind}, {"sum", sum}};
    });
    return json;
}

TEST(Rules, PaymentsFitThePaymentMethods)
{
    const std::pair<const char*, const char*> rows[] = {
        {"advance 60 fullPayment 40 | cash 500", ""},
        {"fullPayment 100 | prepaid 60 cash 40", ""},
        {"partialPayment 100 | prepaid 60 credit 40", ""},
        {"credit 60 partialPayment 40 | credit 70 cash 30", ""},
        {"creditPayment 10 fullPayment 90 | electronically 10 prepaid 90", ""},
        {"advance 60 fullPayment 40 | prepaid 50 cash 50",
            "W items[0].paymentMethod: \"advance\" takes its money with this receipt: 60.00 for such positions, "
            "but without prepaid and credit the payments come to 50.00"},
        {"fullPrepayment 100 | prepaid 100", "W items[0].paymentMethod: \"fullPrepayment\" takes its money"},
        {"fullPayment 1 prepayment 99 | prepaid 99 cash 1",
            "W items[1].paymentMethod: \"prepayment\" takes its money"},
        {"creditPayment 10 | prepaid 10", "W items[0].paymentMethod: \"creditPayment\" takes its money"},
        {"credit 100 | cash 100",
            "W items[0].paymentMethod: \"credit\" hands the goods over unpaid: payments of "
            "type credit must come to 100.00, not 0.00"},
        {"fullPayment 100 | cash 90 credit 10",
            "W payments[1].sum: \"10.00\" is more than positions by credit and "
            "partialPayment leave unpaid, 0.00"},
        {"partialPayment 100 | cash 100", "W items[0].paymentMethod: \"partialPayment\" is paid in part now"},
        {"partialPayment 100 | credit 100",
            "W items[0].paymentMethod: \"partialPayment\" is paid in part now"},
    };
    for (const auto& [receipt, expected] : rows) {
        const std::string text = said(settled(receipt));
        EXPECT_EQ(text.rfind(expected, 0), 0U) << receipt << '\n' << text;
        EXPECT_EQ(text.empty(), *expected == '\0') << receipt << '\n' << text;
    }
}

TEST(Rules, OneCodeIsOnePiece)
{
    const Row rows[] = {
        {"{}", R"({"markingCode": "46000002"})", {"E items[0].quantity: \"2\" must be 1 for a marked piece"}},
        {"{}", R"({"markingCode": "46000002", "quantity": 0.5, "amount": 25})",
            {"E items[0].quantity: \"0.5\" must be 1 for a marked piece"}},
        {"{}", R"({"markingCode": "46000002", "quantity": 1, "amount": 50, "paymentObject": 31})", {}},
        {"{}", R"({"markingCode": "46000002", "quantity": 1, "amount": 50, "paymentObject": "commodity"})",
            {"W items[0].paymentObject: \"commodity\" has no marking code: with one goods are commodityW"}},
        {"{}", R"({"paymentObject": "commodityWithMarking"})",
            {"E items[0].markingCode: is missing: the payment object commodityWithMarking is sold with"}},
        {"{}", R"({"markingCode": "46000003", "quantity": 1, "amount": 50})",
            {"E items[0].markingCode: \"46000003\" has 46000003 with a wrong check digit, 2 would be right"}},
        {"{}", R"({"markingCode": {"mark": "0104600000000015215!Ab1cD\u001d", "type": "shoes"}, "quantity": 1,
            "amount": 50})",
            {"W items[0].markingCode: \"0104600000000015215!Ab1cD<GS>\" has a group separator that"}},
    };
    for (const Row& row : rows)
        expectSaid(row);
    const Row measured{"{}", R"({"markingCode": "46000002", "quantity": 0.5, "amount": 25,
        "measurementUnit": "liter"})",
        {"E items[0].measurementUnit: \"liter\" must be piece"}};
    expectSaid(measured);
    expectSaid({measured.head, measured.item, {}}, Protocol::Hex);
    const Row ofNoWholeCode{"{}", R"({"markingCode": {"mark": "46000002", "type": "fur"}, "quantity": 1,
        "amount": 50})",
        {"W items[0].markingCode.type: \"fur\" is a group of which only the code of the goods in it goes out"}};
    expectSaid(ofNoWholeCode);
    const QByteArray stamp = R"({"markingCode": {"mark": ")" + QByteArray(68, 'A')
        + R"(", "type": "alcohol"}, "quantity": 1, "amount": 50})";
    expectSaid({"{}", stamp,
        {"W items[0].markingCode.type: \"alcohol\" is a group of which only the first 14 characters of its "
         "code, as of a stamp of 150, goes out"}});
    expectSaid({ofNoWholeCode.head, ofNoWholeCode.item, {}}, Protocol::Hex);
}

TEST(Rules, CodeTwiceInAReceiptWithOrWithoutItsProof)
{
    QJsonObject json
        = receiptWith("{}", R"({"markingCode": "0104600000000015215!Ab1cD\u001d93dGVz", "quantity": 1,
        "amount": 50})");
    QJsonArray items = json["items"].toArray();
    items.append(
        patched(items.first().toObject(), R"({"markingCode": "0104600000000015215!Ab1cE\u001d93dGVz"})"));
    items.append(
        patched(items.first().toObject(), R"({"markingCode": "0104600000000015215!Ab1cD\u001d93dGVa"})"));
    json["items"] = items;
    EXPECT_EQ(said(json),
        "E items[2].markingCode: \"0104600000000015215!Ab1cD<GS>93dGVa\" stands at items[0].markingCode too: one "
        "code is one piece");
}

TEST(MarkFault, FormOfACode)
{
    const QByteArray head = "010460000000001521";
    const QByteArray tail = "|91EE06|92" + QByteArray(44, 'k');
    // A group separator is | here.
    const QByteArray piece = head + "5!Ab1cD|93dGVz";
    const std::pair<QByteArray, const char*> rows[] = {
        {piece, ""},
        {head + "91EE0692abc93" + tail, ""},
        {head + "593f)z|933103|3103000123", ""},
        {head + "AnyLength|10LOT|93dGVz", ""},
        {"46000002", ""},
        {"4600000000015", ""},
        {"14600000000012", ""},
        {"00000046198488X?io+qCABm8wAYa", ""},
        {"010000000000237721abcdefghijk", ""},
        {QByteArray(68, 'A'), ""},
        {QByteArray(150, '7'), ""},
        {"RU-430302-ABC1234567", ""},
        {"00000046198489X?io+qCABm8wAYa", "E has 00000046198489 with a wrong check digit, 8 would be right"},
        {"0104600000000016215!Ab1cD|93dGVz",
            "E has 04600000000016 with a wrong check digit, 5 would be right"},
        {head + "5!Ab1cD93dGVz",
            "E has lost its group separators (character 1D); with them it is "
            "\"0104600000000015215!Ab1cD<GS>93dGVz\""},
        {head + "91EE0692abc93|" + QByteArray(tail).remove(0, 1).replace('|', ""),
            "E has lost its group separators (character 1D); with them"},
        {head + "serial of no known layout", "E is no marking code"},
        {head + "serial-of-no-known-layout", "E has lost its group separators (character 1D): the first"},
        {head + "5!Ab1cD<GS>93dGVz", "E has \"<GS>\" in place of its group separators"},
        {head + "5!Ab1cD\\u001d93dGVz", "E has \"\\u001d\" in place of its group separators"},
        {head + "5!Ab1cD 93dGVz", "E has \" \" in place of its group separators"},
        {"]d2" + piece, "E is not as it stands on the goods"},
        {"(01)04600000000015(21)5!Ab1cD", "E is not as it stands on the goods"},
        {" 46000002", "E has blanks around it"},
        {"0104600000000015215!Фи1сВ|93вПМя",
            "E was scanned in the Russian keyboard layout, in the Latin one it "
            "is \"0104600000000015215!Ab1cD<GS>93dGVz\""},
        {"КГ-430302-ФИС1234567",
            "E was scanned in the Russian keyboard layout, in the Latin one it is "
            "\"RU-430302-ABC1234567\""},
        {head + "5!Ab1cD", "W has none of the fields 91, 92 and 93"},
        {head + "5!Ab1cD|10LOT", "W has none of the fields 91, 92 and 93"},
        {"|" + piece, "W has a group separator that separates nothing"},
        {piece + piece, "E has one of the fields 91, 92 and 93 twice"},
        {head, "E is no marking code"},
        {"460000020", "E is no marking code"},
        {QByteArray(68, 'a'), "E is no marking code"},
        {head + "5!Ab1cDé|93dGVz", "E is no marking code"},
    };
    for (const auto& [code, expected] : rows) {
        const std::optional<MarkFault> fault = markFault(QString::fromUtf8(code).replace('|', QChar(0x1D)));
        const std::string text = fault
            ? (fault->severity == Finding::Error ? "E " : "W ") + fault->reason.toStdString()
            : std::string();
        EXPECT_EQ(text.rfind(expected, 0), 0U) << code.constData() << ": " << text;
        EXPECT_EQ(text.empty(), *expected == '\0') << code.constData() << ": " << text;
    }
}

TEST(KeyboardLayout, EachRussianKeyIsALatinOne)
{
    EXPECT_EQ(inLatinLayout(QStringLiteral("ёйхъЖЭБЮ.,/\"№;:?")), QStringLiteral("`q[]:\"<>/?|@#$^&"));
    EXPECT_EQ(inLatinLayout(QStringLiteral("09!%*()-_=+\\")), QStringLiteral("09!%*()-_=+\\"));
}

} // namespace
