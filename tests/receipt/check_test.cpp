// What becomes of a receipt's fields over each protocol.

#include "fieldsieve.h"
#include "fieldtable.h"
#include "printertext.h"
#include "receipterror.h"
#include "receiptparser.h"
#include "receiptpatch.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace receipt;

namespace {

constexpr char allFields[] = R"({"type": "sell", "taxationType": "osn", "operator": {"name": "А"},
    "clientInfo": {"emailOrPhone": "a@b.ru", "name": "ООО", "vatin": "7721000024"}, "paymentsPlace": "Касса",
    "additionalAttribute": "К-7", "items": [
        {"name": "Чай", "price": 50, "quantity": 2, "amount": 100, "tax": {"type": "vat10"},
            "countryCode": "643", "customsDeclaration": "1", "markingCode": {"mark": "1"},
            "agentInfo": {"agents": [4], "payingAgent": {"operation": "a", "phones": ["+71"]},
                "receivePaymentsOperator": {"phones": ["+72"]},
                "moneyTransferOperator": {"name": "a", "address": "a", "phones": ["+73"]}},
            "supplierInfo": {"name": "a", "phones": ["+74"], "vatin": "7721000017"},
            "industryInfo": {"fois": "030", "date": "21.11.2023", "number": "1", "industryAttribute": "a"}},
        {"type": "text", "text": "a"}, {"type": "barcode", "barcodeType": "QR", "barcode": "a", "scale": 4}],
    "payments": [{"type": "cash", "sum": 100}]})";

/// A receipt of one position, with more fields of its own, of the position and with more items.
QByteArray receiptText(const QByteArray& head, const QByteArray& position, const QByteArray& items)
{
    return R"({"type": "sell", "payments": [{"type": "cash", "sum": 1}],)" + head
        + R"("items": [{"price": 1, "quantity": 1, "amount": 1, "tax": {"type": "none"},)" + position + "}"
        + items + "]}";
}

TEST(CheckedReceipt, SaysWhatAProtocolDoesNotCarry)
{
    constexpr Protocol xml = Protocol::Xml;
    constexpr Protocol hex = Protocol::Hex;
    const QByteArray tea = R"("name": "Чай")";
    const QByteArray buyer = R"("clientInfo": {"name": "ООО", "emailOrPhone": "a@b.ru"},)";
    const QByteArray high = R"(,{"type": "barcode", "barcode": "a№", "barcodeType": "QR", "height": 9})";
    const auto position = [&](const QByteArray& fields) { return receiptText("", tea + ',' + fields, ""); };
    const auto line = [&](const QByteArray& fields) {
        return receiptText("", tea, R"(,{"type": "text", )" + fields + '}');
    };
    const auto barcode = [&](const QByteArray& type, const QByteArray& code) {
        return receiptText(
            "", tea, R"(,{"type": "barcode", "barcode": ")" + code + R"(", "barcodeType": ")" + type + "\"}");
    };
    const std::tuple<Protocol, QByteArray, QStringList, const char*> rows[] = {
        {xml, receiptText(buyer, R"("name": "«Чай» — 5 ₽ 😀")", ""), {},
            "W clientInfo.vatin: is missing: over XML tag 1228 goes out empty"},
        {hex, receiptText(buyer, tea, ""), {},
            "E clientInfo.name: \"ООО\" is not carried over HEX; it must be dropped to issue the receipt without it"},
        {hex, receiptText(buyer, tea, ""), {"clientInfo.name"},
            "W clientInfo.name: \"ООО\" is dropped, since it is not carried over HEX"},
        {hex, receiptText(buyer, tea, ""), {"clientInfo.name", "clientInfo.emailOrPhone", "paymentsPlace"},
            "W clientInfo.name: \"ООО\" is dropped, since it is not carried over HEX\n"
            "E clientInfo.emailOrPhone: is carried over HEX and cannot be dropped\n"
            "E paymentsPlace: cannot be dropped: no field of this receipt that is not carried over HEX has this path"},
        {hex, receiptText("", R"("name": "«Чай» — 5 ₽ №1…")", ""), {}, ""},
        {hex, receiptText("", R"("name": "😀 Чай 😀😎")", ""), {},
            "W items[0].name: \"😀 Чай 😀😎\" the printer has no \"😀😎\"; is printed as \"? Чай ??\""},
        {hex, receiptText("", "\"name\": \"" + QByteArray("я").repeated(49) + '"', ""), {},
            "W items[0].name: \"яяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяя\" is cut to 48 characters; "
            "is printed as \"яяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяяя\""},
        {hex,
            position(
                R"("supplierInfo": {"name": "«Поставщик всего ₽»", "vatin": "7721000017"},
                    "agentInfo": {"agents": [4]})"),
            {}, ""},
        {hex, position(R"("supplierInfo": {"name": "Поставщик всего 12345", "vatin": "7721000017"},
                    "agentInfo": {"agents": [4]})"),
            {},
            "W items[0].supplierInfo.name: \"Поставщик всего 12345\" is cut to 19 characters; "
            "is printed as \"Поставщик всего 123\""},
        {xml, receiptText("", tea, high), {"items[].height"},
            "W items[1].height: \"9\" is dropped, since it is not carried over XML"},
        {hex, receiptText("", tea, high), {"items[1].height", "items[].height"},
            "W items[1].height: \"9\" is dropped, since it is not carried over HEX"},
        {hex, receiptText("", tea, R"(,{"type": "barcode", "barcode": "«a»", "barcodeType": 7})"), {},
            "E items[1].barcode: \"«a»\" cannot be printed over HEX: it may not have \"«»\"\n"
            "E items[1].barcodeType: \"PDF417\" is not printed over HEX; what is: UPC_A, UPC_E, EAN13, EAN8, "
            "CODE39, ITF, CODABAR, CODE93, CODE128, QR"},
        {xml, barcode("CODE39", "«a»"), {},
            "E items[1].barcodeType: \"CODE39\" is not printed over XML; what is: EAN13, QR"},
        {xml, barcode("EAN13", "46000000001"), {},
            "E items[1].barcode: \"46000000001\" must be 12 or 13 digits in a barcode of type EAN13"},
        {hex, barcode("EAN8", "4600002"), {}, ""},
        {hex, barcode("EAN8", "46000026"), {}, ""},
        {hex, barcode("EAN8", "46000025"), {},
            "W items[1].barcode: \"46000025\" has a wrong check digit; the right one is 6"},
        {xml, barcode("EAN13", "4600000000017"), {},
            "W items[1].barcode: \"4600000000017\" has a wrong check digit; the right one is 5"},
        {hex, barcode("UPC_A", "036000291453"), {},
            "W items[1].barcode: \"036000291453\" has a wrong check digit; the right one is 2"},
        {hex, barcode("ITF", "12A"), {},
            "E items[1].barcode: \"12A\" must be digits in a barcode of type ITF"},
        {hex, barcode("CODE128", "Чай"), {},
            "E items[1].barcode: \"Чай\" must be Latin letters, digits and signs of ASCII in a barcode of type "
            "CODE128"},
        {hex, barcode("CODE128", "Tea\\u001d1"), {}, ""},
        {xml, line(R"("text": "‼?q0001a")"), {},
            "E items[1].text: \"‼?q0001a\" must not begin with ‼?, which is a command to the printer over XML"},
        {xml, line(R"("text": "a", "doubleWidth": true, "doubleHeight": true)"), {},
            "W items[1].doubleHeight: is not printed over XML together with doubleWidth: the line is wide alone"},
        {xml, barcode("QR", "1\\u001d"), {},
            "E items[1].barcode: has the control character U+001D at character 2, which XML cannot carry"},
        {hex, barcode("QR", "1\\u001d"), {}, ""},
        {hex, line(R"("text": "a", "doubleWidth": true, "doubleHeight": true)"), {}, ""},
    };
    for (const auto& [protocol, text, drop, findings] : rows)
        EXPECT_EQ(findingsOf(checkedReceipt(text, {protocol, {}, drop, false})), findings)
            << text.constData();
}

TEST(CheckedReceipt, HoldsWhatIsPrinted)
{
    const QByteArray text
        = receiptText(R"("operator": {"name": "O’Нил"}, "paymentsPlace": "тут",)", R"("name": "«Чай»")",
            R"(,{"type": "text", "text": "5 ₽", "doubleWidth": true, "doubleHeight": true})");
    const Receipt receipt = checkedReceipt(text, {Protocol::Hex, {}, {"paymentsPlace"}, false}).receipt;
    EXPECT_EQ(receipt.cashier->name, QStringLiteral("O'Нил"));
    EXPECT_EQ(receipt.items.at(0).position.getName(), QStringLiteral("\"Чай\""));
    EXPECT_EQ(receipt.items.at(1).text, QStringLiteral("5 руб."));
    EXPECT_EQ(receipt.items.at(1).font, EFrDriver::DoubleSizeFont);
    EXPECT_TRUE(receipt.requisites.isEmpty());
}

QJsonValue withField(const QJsonValue& source, const QStringList& steps, const QString& text)
{
    if (source.isArray()) {
        // Each item that has the field gets it.
        QJsonArray result;
        for (const QJsonValue entry : source.toArray())
            result.append(steps.isEmpty() ? text : withField(entry, steps, text));
        return result;
    }
    if (steps.isEmpty() || !source.isObject())
        return text;
    QJsonObject result = source.toObject();
    if (result.contains(steps.constFirst()))
        result[steps.constFirst()] = withField(result.value(steps.constFirst()), steps.mid(1), text);
    return result;
}

/// Whether the receipt with that many characters in the field goes out as it stands.
bool isWhole(const FieldRule& rule, Protocol protocol, int size)
{
    const QStringList steps = QString::fromLatin1(rule.path).remove(QStringLiteral("[]")).split('.');
    const QJsonObject all = QJsonDocument::fromJson(allFields).object();
    const QJsonObject json = withField(all, steps, QString(size, QLatin1Char('1'))).toObject();
    CheckOptions options{protocol, {}, {}, false};
    for (const FieldRule& other : fieldRules())
        options.drop.append(QLatin1String(other.path));
    QList<Finding> findings;
    try {
        receiptFromJson(json);
        carriedReceipt(json, options, findings);
    } catch (const ReceiptError&) {
        return false;
    }
    return std::none_of(findings.cbegin(), findings.cend(), [&](const Finding& finding) {
        return finding.severity == Finding::Warning && fieldRule(finding.path) == &rule;
    });
}

QStringList errorPaths(const QJsonObject& json, Protocol protocol)
{
    QStringList paths;
    const auto note = [&paths](const QList<Finding>& findings) {
        for (const Finding& finding : findings) {
            if (finding.severity == Finding::Error)
                paths.append(finding.path);
        }
    };
    try {
        note(checkedReceipt(QJsonDocument(json).toJson(), {protocol, {}, {}, false}).findings);
    } catch (const ReceiptError& error) {
        note(error.findings());
    }
    return paths;
}

/// Puts an array of an array in the place of one plain value, the first for 0, and tells its path.
struct Breaker
{
    int place;
    QString path = {};

    QJsonValue operator()(const QJsonValue& value, const QString& at)
    {
        if (value.isObject()) {
            QJsonObject object = value.toObject();
            for (const QString& key : object.keys())
                object[key] = (*this)(object.value(key), at.isEmpty() ? key : at + '.' + key);
            return object;
        }
        if (value.isArray()) {
            QJsonArray array = value.toArray();
            for (qsizetype i = 0; i < array.size(); ++i)
                array[i] = (*this)(array.at(i), QStringLiteral("%1[%2]").arg(at).arg(i));
            return array;
        }
        if (place-- != 0)
            return value;
        path = at;
        return QJsonArray{QJsonArray()};
    }
};

TEST(CheckedReceipt, TellsOfAMalformedFieldThatAlone)
{
    const QJsonObject whole = QJsonDocument::fromJson(allFields).object();
    for (const Protocol protocol : {Protocol::Xml, Protocol::Hex}) {
        const QStringList before = errorPaths(whole, protocol);
        int place = 0;
        for (;; ++place) {
            Breaker breaker{place};
            const QJsonObject broken = breaker(whole, {}).toObject();
            if (breaker.path.isEmpty())
                break;
            QStringList told = errorPaths(broken, protocol);
            EXPECT_EQ(told.removeAll(breaker.path), 1) << breaker.path.toStdString();
            for (const QString& path : told)
                EXPECT_TRUE(before.contains(path))
                    << breaker.path.toStdString() << ": " << path.toStdString();
        }
        EXPECT_GT(place, 35);
    }
}

TEST(CheckedReceipt, TellsAllThatIsMalformed)
{
    const QByteArray text
        = R"({"type": "buy", "operator": {"name": 5, "vatin": "12"}, "paymentsPlace": "Касса",
        "items": [{"name": "", "price": "5", "quantity": 0, "amount": 10, "tax": {"type": "vat2"}, "discount": 1},
            {"type": "txt", "txt": "a"}, 7,
            {"name": "Чай", "price": 5, "quantity": 2, "amount": 11, "tax": {"type": "none"}, "markingCode": "a",
                "agentInfo": {"agents": ["x"], "payingAgent": {"phones": ["1", "2"]}}},
            {"type": "barcode", "barcode": "a", "barcodeType": 3}], "payments": []})";
    EXPECT_EQ(errorPaths(QJsonDocument::fromJson(text).object(), Protocol::Hex),
        (QStringList{"type", "operator.name", "operator.vatin", "items[0].name", "items[0].price",
            "items[0].quantity", "items[0].tax.type", "items[0].discount", "items[1].type", "items[2]",
            "items[3].amount", "items[3].agentInfo.agents[0]", "items[3].agentInfo.payingAgent.phones",
            "payments", "paymentsPlace", "items[4].barcode", "items[3].supplierInfo.vatin",
            "items[3].markingCode", "items[3].quantity"}));
}

TEST(CheckedReceipt, KeyThatStandsTwiceHidesNothing)
{
    try {
        checkedReceipt(R"({"type": "sell", "type": "sell", "items": 7, "payments": 7})", {});
        FAIL();
    } catch (const ReceiptError& error) {
        EXPECT_STREQ(error.what(),
            "type: stands there twice; items: must be an array, not a number (given: 7); "
            "payments: must be an array, not a number (given: 7)");
    }
}

TEST(FieldTable, HasTheLimitsThatTheParserAndTheDriversKeep)
{
    // Shorter ones are numbers of a fixed form.
    constexpr int longestNumber = 12;
    for (const FieldRule& rule : fieldRules()) {
        for (const Protocol protocol : {Protocol::Xml, Protocol::Hex}) {
            const FieldCarriage& carriage = rule.over(protocol);
            if (carriage.limit <= longestNumber)
                continue;
            EXPECT_TRUE(isWhole(rule, protocol, carriage.limit)) << rule.path;
            EXPECT_FALSE(isWhole(rule, protocol, carriage.limit + 1)) << rule.path;
        }
    }
}

TEST(FieldTable, StandsInTheGuide)
{
    QFile guide(QStringLiteral(FRSPF_GUIDE));
    ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
    QString table = QStringLiteral("\n| Field | Over XML | Over HEX |\n|---|---|---|\n");
    for (const FieldRule& rule : fieldRules())
        table += QStringLiteral("| `%1` | %2 | %3 |\n")
                     .arg(QLatin1String(rule.path), rule.xml.text(), rule.hex.text());
    EXPECT_TRUE(QString::fromUtf8(guide.readAll()).contains(table + '\n'))
        << "it should be" << table.toStdString();
}

TEST(PrinterText, HasOnlyCharactersOfTheCodePage)
{
    const std::tuple<QString, const char*, const char*> rows[] = {
        {QStringLiteral("Ёж, ёлка № 1, 20 °C"), "Ёж, ёлка № 1, 20 °C", ""},
        {QStringLiteral("«А» „Б“ ‘в’ – — − ‑ …"), "\"А\" \"Б\" 'в' - - - - ...", ""},
        {QStringLiteral("1\u00A0000\u202F₽\u200B\uFEFF"), "1 000 руб.", ""},
        {QStringLiteral("\u0439 и\u0306 е\u0308"), "й й ё", ""},
        {QStringLiteral("Crème 茶 ?"), "Cr?me ? ?", "è茶"},
        {QStringLiteral("❤️"), "?", "❤"},
    };
    for (const auto& [text, printed, lost] : rows) {
        const PrinterText result = printerText(text);
        EXPECT_EQ(result.text.toStdString(), printed);
        EXPECT_EQ(result.lost.toStdString(), lost);
    }
    EXPECT_EQ(printerText(QStringLiteral("ab…"), 4).text, QStringLiteral("ab.."));
}

} // namespace
