#include "linesum.h"
#include "markingcode.h"
#include "money.h"
#include "receipterror.h"
#include "receiptparser.h"
#include "receiptpatch.h"

#include <gtest/gtest.h>

#include <random>

using namespace receipt;

namespace {

std::string errorOf(const QByteArray& headPatch, const QByteArray& itemPatch)
{
    try {
        receiptFromJson(receiptWith(headPatch, itemPatch));
    } catch (const ReceiptError& error) {
        return error.what();
    }
    return {};
}

FrPosition positionWith(const QByteArray& itemPatch)
{
    return receiptFromJson(receiptWith("{}", itemPatch)).items.constFirst().position;
}

QString requisite(const FdRequisiteMap& map, int tag)
{
    return map.value(static_cast<EFrDriver::RequisiteTypes>(tag)).getSourceData().toString();
}

TEST(ReceiptFromJson, DefaultsAreAPlainSale)
{
    const Receipt receipt = receiptFromJson(receiptWith("{}", "{}"));
    const FrPosition position = receipt.items.constFirst().position;
    EXPECT_EQ(receipt.document.getDocumentType(), hw::fr::CheckSale);
    EXPECT_EQ(receipt.document.getTaxSystem(), 0);
    EXPECT_EQ(receipt.total, 10000);
    EXPECT_EQ(receipt.paid, 100000);
    EXPECT_FALSE(receipt.cashier || receipt.hasMarkedItems() || receipt.isReturn());
    EXPECT_EQ(position.getPaymentMethod(), 4);
    EXPECT_EQ(position.getPaymentObject(), 1);
    EXPECT_EQ(position.getFrUnit(), 0);
    EXPECT_EQ(position.getMeasureName(), QStringLiteral("шт."));
    EXPECT_EQ(position.getTaxCode(), 1);
    // Sums may drift as doubles do.
    const QByteArray computed
        = R"({"price": 64.89999999999999, "quantity": 3.0000000000000004, "amount": 194.70000000000002})";
    EXPECT_EQ(receiptFromJson(receiptWith("{}", computed)).total, 19470);
}

TEST(ReceiptFromJson, HeadGoesIntoDocumentAndRequisites)
{
    const Receipt receipt = receiptFromJson(receiptWith(R"({"type": 1, "taxationType": 32,
        "electronically": true, "operator": {"name": "Иванова", "vatin": "772100000040"},
        "clientInfo": {"emailOrPhone": "a@example.org", "name": "ООО Ромашка", "vatin": "7721000031"},
        "additionalAttribute": "К-7", "paymentsPlace": "Касса 2",
        "payments": [{"type": "electronically", "sum": 60.5}, {"type": "prepaid", "sum": 1},
            {"type": 3, "sum": 2}, {"type": "other", "sum": 3}, {"type": "cash", "sum": 33.5}]})",
        "{}"));
    EXPECT_TRUE(receipt.isReturn());
    EXPECT_EQ(receipt.document.getTaxSystem(), 32);
    EXPECT_EQ(receipt.document.getPrintMode(), 1);
    EXPECT_EQ(receipt.document.getCustomerAddress(), QStringLiteral("a@example.org"));
    EXPECT_EQ(receipt.cashier->inn, QStringLiteral("772100000040"));
    QList<int> tags;
    for (const FdRequisite& entry : receipt.requisites)
        tags.append(entry.getTag());
    EXPECT_EQ(tags, (QList<int>{1055, 1008, 1256, 1187, 1192}));
    EXPECT_EQ(requisite(receipt.requisites.at(2).toMap(), 1228), QStringLiteral("7721000031"));
    QList<int> kinds;
    for (const FrPayment& payment : receipt.payments)
        kinds.append(payment.kind);
    EXPECT_EQ(kinds, (QList<int>{1, 2, 3, 4, 0}));
    EXPECT_DOUBLE_EQ(receipt.payments.constFirst().sum, 60.5);
}

TEST(ReceiptFromJson, PositionTakesCodesOfTheFormat)
{
    using Field = int (FrPosition::*)() const;
    const std::tuple<const char*, Field, int> rows[] = {
        {R"({"tax": {"type": "none"}})", &FrPosition::getTaxCode, 6},
        {R"({"tax": {"type": "vat107"}})", &FrPosition::getTaxCode, 10},
        {R"({"tax": {"type": 13}})", &FrPosition::getTaxCode, 13},
        {R"({"tax": {"type": "vat22"}})", &FrPosition::getTaxCode, 11},
        {R"({"tax": {"type": "vat122"}})", &FrPosition::getTaxCode, 12},
        {R"({"paymentMethod": "advance"})", &FrPosition::getPaymentMethod, 3},
        {R"({"paymentMethod": 7})", &FrPosition::getPaymentMethod, 7},
        {R"({"paymentObject": "service"})", &FrPosition::getPaymentObject, 4},
        {R"({"markingCode": "0104600000000015215abc"})", &FrPosition::getPaymentObject, 33},
        {R"({"markingCode": {"mark": "22N", "type": "alcohol"}})", &FrPosition::getPaymentObject, 31},
        {R"({"measurementUnit": "kilogram"})", &FrPosition::getFrUnit, 11},
    };
    for (const auto& [patch, field, code] : rows)
        EXPECT_EQ((positionWith(patch).*field)(), code) << patch;
}

TEST(ReceiptFromJson, RequisitesOfAPosition)
{
    const FrPosition position = positionWith(R"({"countryCode": "643", "customsDeclaration": "10013160/1",
        "agentInfo": {"agents": ["payingAgent", 64],
            "payingAgent": {"operation": "Платёж", "phones": ["+71"]},
            "receivePaymentsOperator": {"phones": ["+72"]},
            "moneyTransferOperator": {"name": "АО", "address": "Москва", "phones": ["+73"],
                "vatin": "7721000031"}},
        "supplierInfo": {"name": "ПАО", "phones": ["+74"], "vatin": "7721000017"},
        "industryInfo": {"fois": "030", "date": "21.11.2023", "number": "19", "industryAttribute": "a=b"}})");
    const FdRequisiteMap own = position.getRequisites();
    EXPECT_EQ(own.keys(),
        (QList<EFrDriver::RequisiteTypes>{EFrDriver::ItemAgentType, EFrDriver::AgentData,
            EFrDriver::SupplierData, EFrDriver::SupplierInn, EFrDriver::CountryOfOrigin,
            EFrDriver::CustomsDeclaration, EFrDriver::IndustryRequisite}));
    EXPECT_EQ(requisite(own, 1222), QStringLiteral("68"));
    EXPECT_EQ(requisite(own, 1226), QStringLiteral("7721000017"));
    const auto textOf = [&position](EFrDriver::RequisiteTypes block) {
        QStringList fields;
        const FdRequisiteMap map = position.getRequisite(block).toMap();
        for (auto field = map.cbegin(); field != map.cend(); ++field)
            fields.append(QString::number(field.key()) + '=' + field->getSourceData().toString());
        return fields.join(' ').toStdString();
    };
    EXPECT_EQ(textOf(EFrDriver::AgentData),
        "1005=Москва 1016=7721000031 1026=АО 1044=Платёж 1073=+71 1074=+72 1075=+73");
    EXPECT_EQ(textOf(EFrDriver::SupplierData), "1171=+74 1225=ПАО");
    EXPECT_EQ(textOf(EFrDriver::IndustryRequisite), "1262=030 1263=21.11.2023 1264=19 1265=a=b");
}

TEST(ReceiptFromJson, PrintItemsKeepTheirOrder)
{
    QJsonObject json = receiptWith("{}", "{}");
    QJsonArray items = json.value(QStringLiteral("items")).toArray();
    for (const char* size : {R"("doubleWidth": true, "doubleHeight": true)", R"("doubleHeight": true)",
             R"("doubleWidth": true, "doubleHeight": false)"})
        items.prepend(fromText(QByteArray(R"({"type": "text", "text": "До", )") + size + '}'));
    items.append(fromText(R"({"type": "barcode", "barcode": "12", "barcodeType": 10, "scale": 3,
        "height": 80, "printText": false})"));
    json.insert(QStringLiteral("items"), items);
    const Receipt receipt = receiptFromJson(json);
    ASSERT_EQ(receipt.items.size(), 5);
    const QList<EFrDriver::FontTypes> fonts{EFrDriver::DoubleWidthFont, EFrDriver::DoubleHeightFont,
        EFrDriver::DoubleSizeFont, EFrDriver::UndefinedFont};
    for (int index = 0; index < fonts.size(); ++index)
        EXPECT_EQ(receipt.items.at(index).font, fonts.at(index)) << index;
    EXPECT_EQ(receipt.items.at(3).kind, ReceiptItem::Position);
    EXPECT_EQ(receipt.items.at(3).path, QStringLiteral("items[3]"));
    const Barcode& barcode = receipt.items.at(4).barcode;
    EXPECT_EQ(QList<int>({barcode.type, barcode.textPosition, barcode.moduleWidth, barcode.height}),
        QList<int>({10, 0, 3, 80}));
}

TEST(ReceiptFromJson, MistakesAreNamedWithTheirPath)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {R"({"type": null})", "{}", "type: is missing"},
        {R"({"type": "sale"})", "{}", "type: is none of sell, sellReturn"},
        {R"({"type": 2})", "{}", "type: is none of sell (0), sellReturn (1)"},
        {R"({"operator": {"name": "Я\u007f"}})", "{}",
            "operator.name: has the control character U+007F at character 2 (given: "},
        {R"({"type": "buy"})", "{}", "type: is not possible, only sell and sellReturn are"},
        {R"({"type": "sellReturnCorrection"})", "{}", "type: is not possible"},
        {R"({"totall": 1})", "{}", "totall: is not a known field here"},
        {R"({"operator": {"name": "А", "vatin": "12"}})", "{}", "operator.vatin: must have 10 or 12 digits"},
        {R"({"items": []})", "{}", "items: must not be empty"},
        {R"({"items": [7]})", "{}", "items[0]: must be an object"},
        {R"({"items": [{"type": "text", "text": "a"}]})", "{}", "items: must have a position"},
        {R"({"payments": [{"type": "cash", "sum": 99.99}]})", "{}", "payments: 99.99 do not cover the total"},
        {R"({"payments": [{"type": "credit", "sum": 100.01}]})", "{}",
            "payments: 100.01 without cash are more"},
        {"{}", R"({"price": "50"})", "items[0].price: must be a number, not a text (given: \"50\")"},
        {"{}", R"({"name": "a\nb"})", "items[0].name: has the control character U+000A at character 2"},
        {"{}", R"({"markingCode": "01\u001e9"})",
            "items[0].markingCode: has the control character U+001E at character 3 (given: \"01<1E>9\")"},
        {"{}", R"({"tax": {"type": 256}})", "items[0].tax.type: must be a whole number from 1 to 255"},
        {"{}", R"({"agentInfo": {"agents": [3]}})", "items[0].agentInfo.agents[0]: is none of bankPaying"},
        {"{}", R"({"supplierInfo": {"phones": ["\u0001"]}})", "items[0].supplierInfo.phones[0]: has the"},
        {"{}", R"({"price": 50.001})", "items[0].price: must have at most 2 decimals"},
        {"{}", R"({"price": 50.000001})", "items[0].price: must have at most 2 decimals"},
        {"{}", R"({"price": 1e300})", "items[0].price: is too large"},
        {"{}", R"({"quantity": 0})", "items[0].quantity: must be above zero"},
        {"{}", R"({"quantity": 1.0001})", "items[0].quantity: must have at most 3 decimals"},
        {"{}", R"({"amount": 99.99})",
            "items[0].amount: must be price times quantity less the discount, 100.00"},
        {"{}", R"({"infoDiscountAmount": 100.01, "amount": 0})", "items[0].infoDiscountAmount: is more than"},
        {"{}", R"({"quantity": 3, "infoDiscountAmount": 10, "amount": 140})",
            "items[0].infoDiscountAmount: does not divide into whole kopecks per unit; "
            "nearest possible: 9.99 and 10.02; \"split\": true"},
        {"{}", R"({"quantity": 2.5, "infoDiscountAmount": 0.01, "amount": 124.99, "split": true})",
            "items[0].infoDiscountAmount: does not divide into whole kopecks per unit; "
            "nearest possible: 0.00 and 0.02; only a whole quantity can be split"},
        {"{}", R"({"quantity": 3, "infoDiscountAmount": 10, "amount": 140, "split": true,
            "markingCode": "46000002"})",
            "items[0].infoDiscountAmount: does not divide into whole kopecks per unit; "
            "nearest possible: 9.99 and 10.02; marked goods are not split"},
        {"{}", R"({"measurementUnit": 256})",
            "items[0].measurementUnit: must be a whole number from 0 to 255"},
        {"{}", R"({"markingCode": {"type": "shoes"}})", "items[0].markingCode.mark: is missing"},
        {"{}", R"({"supplierInfo": {"phones": ["+7", "+8"]}})",
            "items[0].supplierInfo.phones: the register takes"},
        {"{}", R"({"industryInfo": {"date": "2023-11-21"}})", "items[0].industryInfo.date: must be a date"},
        {"{}", R"({"countryCode": "RU"})", "items[0].countryCode: must have three digits"},
    };
    for (const auto& [head, item, error] : rows)
        EXPECT_EQ(errorOf(head, item).rfind(error, 0), 0U) << errorOf(head, item) << "\ninstead of " << error;
}

TEST(ReceiptError, HasTheValueOfTheFile)
{
    const QString longText(70, 'a');
    const std::tuple<QJsonValue, QString, const char*> rows[] = {
        {QStringLiteral("01\u001D"), QStringLiteral("01\u001D"), "a: is bad (given: \"01<GS>\")"},
        {50.001, QStringLiteral("50.001"), "a: is bad (given: 50.001)"},
        {QJsonValue::Null, QStringLiteral("null"), "a: is bad (given: null)"},
        {QJsonArray{1}, QString(), "a: is bad"},
        {longText, longText,
            "a: is bad (given: \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...\")"},
    };
    for (const auto& [value, text, message] : rows) {
        const ReceiptError error("a", "is bad", value);
        EXPECT_EQ(error.given(), value);
        EXPECT_EQ(error.givenText(), text);
        EXPECT_STREQ(error.what(), message);
    }
}

TEST(LineSum, DiscountsThatTheRegisterCanExpress)
{
    const std::pair<LineSum, bool> rows[] = {{{10000, 3000, 0}, true}, {{10000, 3000, 999}, true},
        {{10000, 3000, 1000}, false}, {{10000, 333, 100}, true}, {{10001, 500, 0}, true},
        {{100, 99999999, 1}, false}, {{10000, 2000, 20000}, true}};
    for (const auto& [sum, divisible] : rows)
        EXPECT_EQ(sum.isDiscountDivisible(), divisible)
            << sum.price << " * " << sum.quantity << " - " << sum.discount;
}

/// Quantity and price with discount of each position, as the register gets them.
QStringList soldLines(const Receipt& receipt)
{
    QStringList lines;
    for (const ReceiptItem& item : receipt.items)
        lines.append(QString::number(item.position.getCount(), 'f', 3) + QStringLiteral(" x ")
            + QString::number(item.position.getPriceWithDisc(), 'f', 2));
    return lines;
}

TEST(ReceiptFromJson, DiscountThatDoesNotDivideMakesTwoPositions)
{
    const QByteArray discounted
        = R"({"price": 10, "quantity": 3, "infoDiscountAmount": 1, "amount": 29, "countryCode": "643"})";
    const Receipt receipt = receiptFromJson(receiptWith("{}", discounted), true);
    EXPECT_EQ(soldLines(receipt), (QStringList{"2.000 x 9.67", "1.000 x 9.66"}));
    EXPECT_EQ(receipt.total, 2900);
    for (const ReceiptItem& item : receipt.items) {
        EXPECT_EQ(item.path, QStringLiteral("items[0]"));
        EXPECT_EQ(item.position.getName(), QStringLiteral("Чай"));
        EXPECT_EQ(item.position.getTaxCode(), 1);
        EXPECT_TRUE(item.position.hasFdRequisite(EFrDriver::CountryOfOrigin));
    }
    const QByteArray even
        = R"({"price": 10, "quantity": 3, "infoDiscountAmount": 3, "amount": 27, "split": true})";
    EXPECT_EQ(soldLines(receiptFromJson(receiptWith("{}", even))), QStringList{"3.000 x 9.00"});
}

TEST(LineSum, SplitKeepsTheSumToTheKopeck)
{
    std::mt19937 random(15);
    const auto from = [&random](qint64 least, qint64 most) {
        return std::uniform_int_distribution<qint64>(least, most)(random);
    };
    for (int round = 0; round < 20000; ++round) {
        LineSum sum{from(0, round % 2 == 0 ? 99 : 10000000), from(1, 999) * 1000, 0};
        sum.discount = from(0, sum.gross());
        const QList<LineSum> lines = sum.split();
        ASSERT_LE(lines.size(), 2);
        qint64 amount = 0;
        qint64 quantity = 0;
        QList<qint64> prices;
        for (const LineSum& line : lines) {
            FrPosition position(QString(), roubles(line.price), static_cast<double>(line.quantity) / 1000.0);
            position.setDiscsum(roubles(line.discount));
            // The register gets the price as text and multiplies by itself.
            prices.append(QString::number(position.getPriceWithDisc(), 'f', 2).remove('.').toLongLong());
            amount += prices.constLast() * line.quantity / 1000;
            quantity += line.quantity;
            ASSERT_TRUE(line.isDiscountDivisible() && line.discount >= 0);
            ASSERT_EQ(lineSumOf(position).amount(), line.amount());
        }
        ASSERT_EQ(amount, sum.amount()) << sum.price << " * " << sum.quantity << " - " << sum.discount;
        ASSERT_EQ(quantity, sum.quantity);
        ASSERT_EQ(lines.size() == 1, sum.isDiscountDivisible());
        ASSERT_EQ(prices.constFirst() - prices.constLast(), lines.size() == 1 ? 0 : 1);
    }
}

TEST(MarkFromText, TellsBase64FromAScannedCode)
{
    const std::pair<const char*, const char*> rows[]
        = {{"MDEwNDYwMDAwMDAwMDAxNTIxNWFiYx05M2RHVno=", "0104600000000015215abc\x1D\x39\x33\x64GVz"},
            {"0104600000000015215abc12", "0104600000000015215abc12"}, {"46000000", "46000000"},
            {"RU-430302-ABC1234567", "RU-430302-ABC1234567"}};
    for (const auto& [text, code] : rows)
        EXPECT_EQ(markFromText(text), code);
}

} // namespace
