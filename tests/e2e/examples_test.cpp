// What the receipts of examples/ say must stand in the register's journal, field by field.

#include "programs.h"

#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr const char* bothProtocols = "HEX XML";

QString told(const QJsonValue& value)
{
    return value.toVariant().toString();
}

QString money(double sum)
{
    return QString::number(sum, 'f', 2);
}

// An item as the receipt has it, and the field of it that is looked at.
QString asItIs(const QJsonObject&, const QJsonValue& value)
{
    return told(value);
}

QString asCode(const QJsonObject&, const QJsonValue& value)
{
    static const QHash<QString, int> codes{{"osn", 1}, {"vat10", 2}, {"none", 6}, {"vat22", 11},
        {"vat122", 12}, {"advance", 3}, {"fullPayment", 4}, {"service", 4}, {"payment", 10},
        {"commodityWithMarking", 33}, {"kilogram", 11}, {"meter", 22}, {"payingAgent", 4},
        {"commissionAgent", 32}};
    return QString::number(codes.value(told(value), -1));
}

struct Row
{
    const char* field;
    /// Where in the journal, within the item for one of an item; "tape" is the tape, and null what the wire
    /// does not carry or the register does not keep.
    const char* place;
    QString (*expected)(const QJsonObject& item, const QJsonValue& value) = asItIs;
    const char* protocols = bothProtocols;
};

constexpr Row mapping[] = {
    {"type", "type"},
    {"taxationType", "taxSystem", asCode},
    {"electronically", "unprinted"},
    {"operator.name", "cashier"},
    {"operator.vatin", "cashierInn"},
    {"clientInfo.emailOrPhone", "customer"},
    {"clientInfo.name", "requisites.1256.1227"},
    {"clientInfo.vatin", "requisites.1256.1228"},
    {"paymentsPlace", "requisites.1187"},
    {"additionalAttribute", "requisites.1192"},
    {"items[].type", nullptr},
    {"items[].name", "name"},
    // The register takes the price that is left of it.
    {"items[].price", "price",
        [](auto& item, auto& value) {
            return money(
                value.toDouble() - item["infoDiscountAmount"].toDouble() / item["quantity"].toDouble());
        }},
    {"items[].quantity", "quantity",
        [](auto&, auto& value) { return QString::number(value.toDouble(), 'f', 3); }},
    {"items[].infoDiscountAmount", "discount", [](auto&, auto& value) { return money(-value.toDouble()); },
        "XML"},
    {"items[].amount", "sum", [](auto&, auto& value) { return money(value.toDouble()); }},
    {"items[].tax.type", "tax", asCode},
    {"items[].paymentMethod", "paymentMethod", asCode},
    {"items[].paymentObject", "paymentObject", asCode},
    {"items[].measurementUnit", "unit", asCode},
    {"items[].markingCode.mark", "markingCode"},
    // The group of goods makes the tag of the code.
    {"items[].markingCode.mark", "goodsCode.1305",
        [](auto&, auto& value) { return QString(told(value).section('\x1D', 0, 0).toUtf8().toHex()); },
        "XML"},
    {"items[].markingCode.type", nullptr},
    {"items[].countryCode", "country"},
    {"items[].customsDeclaration", "declaration"},
    {"items[].agentInfo.agents[]", "agent.1222", asCode},
    {"items[].agentInfo.payingAgent.operation", "agent.1044"},
    {"items[].agentInfo.payingAgent.phones[]", "agent.1073"},
    {"items[].agentInfo.receivePaymentsOperator.phones[]", "agent.1074"},
    {"items[].agentInfo.moneyTransferOperator.name", "agent.1026"},
    {"items[].agentInfo.moneyTransferOperator.address", "agent.1005"},
    {"items[].agentInfo.moneyTransferOperator.phones[]", "agent.1075"},
    {"items[].agentInfo.moneyTransferOperator.vatin", "agent.1016"},
    {"items[].supplierInfo.name", "agent.1225"},
    {"items[].supplierInfo.phones[]", "agent.1171"},
    {"items[].supplierInfo.vatin", "agent.1226"},
    {"items[].industryInfo.fois", "industry.1262"},
    {"items[].industryInfo.date", "industry.1263"},
    {"items[].industryInfo.number", "industry.1264"},
    {"items[].industryInfo.industryAttribute", "industry.1265"},
    {"items[].text", "tape"},
    {"items[].barcode", "tape"},
    {"items[].barcodeType", "tape"},
    {"items[].doubleWidth", nullptr},
    {"items[].doubleHeight", nullptr},
    {"items[].scale", nullptr},
    {"items[].height", nullptr},
    {"items[].printText", nullptr},
};

// What the register knows of a position besides what the receipt says.
const QStringList ownFields{
    "paymentMethod", "paymentObject", "unit", "measure", "fullPrice", "assignedStatus", "markingStatus"};

using Fields = QList<std::pair<QString, QJsonValue>>;

/// The values within a value, each with its path.
Fields fieldsOf(const QJsonValue& value, const QString& path)
{
    Fields fields;
    if (value.isArray()) {
        for (const QJsonValue& element : value.toArray())
            fields += fieldsOf(element, path + "[]");
        return fields;
    }
    if (!value.isObject())
        return {{path, value}};
    const QJsonObject object = value.toObject();
    for (auto field = object.begin(); field != object.end(); ++field)
        fields += fieldsOf(field.value(), path.isEmpty() ? field.key() : path + '.' + field.key());
    return fields;
}

QString valueAt(QJsonValue value, const QString& place)
{
    for (const QString& key : place.split('.'))
        value = value.toObject().value(key);
    return told(value);
}

class Examples : public testing::TestWithParam<const char*>
{
protected:
    bool isMine(const QString& file) const
    {
        const bool isOther = file.endsWith(protocol == "HEX" ? "-xml.json" : "-hex.json");
        return !isOther;
    }

    QJsonObject sold(const QString& file, const QJsonObject& receipt) const
    {
        const char* const command = receipt["type"] == "sell" ? "sell" : "refund";
        const Result result = runFrctl({"--protocol", protocol, "--port", emulator.port(), "--journal",
            journal.filePath("sales"), command, FRSPF_EXAMPLES "/" + file});
        EXPECT_EQ(result.status, 0);
        EXPECT_TRUE(result.errors.isEmpty()) << result.errors.constData();
        return emulator.journal().constLast();
    }

    /// Compares the fields and answers the places where they stood.
    QStringList compare(const QJsonObject& said, const QJsonObject& stored, const QString& path) const
    {
        const QString tape = emulator.tape().remove(' ');
        QStringList places;
        for (const auto& [field, value] : fieldsOf(said, path)) {
            bool isKnown = false;
            for (const Row& row : mapping) {
                if (field != row.field)
                    continue;
                isKnown = true;
                if (row.place == nullptr || !QString(row.protocols).contains(protocol))
                    continue;
                const QString expected = row.expected(said, value);
                if (QString(row.place) == "tape")
                    EXPECT_TRUE(tape.contains(QString(expected).remove(' '))) << row.field;
                else
                    EXPECT_EQ(valueAt(stored, row.place).toStdString(), expected.toStdString()) << row.field;
                places.append(row.place);
            }
            EXPECT_TRUE(isKnown) << field.toStdString() << " has no row in the table";
        }
        return places;
    }

    void compareItems(const QJsonArray& said, const QJsonArray& stored) const
    {
        qsizetype position = 0;
        for (const QJsonValue& item : said) {
            const bool isPosition = !item["type"].isString() || item["type"] == "position";
            const QJsonObject entry = isPosition ? stored.at(position++).toObject() : QJsonObject();
            const QStringList places = compare(item.toObject(), entry, "items[]") + ownFields;
            for (const auto& [place, value] : fieldsOf(entry, {}))
                EXPECT_TRUE(places.contains(place)) << place.toStdString() << " was not said";
        }
        EXPECT_EQ(position, stored.size());
    }

    void compareSums(const QJsonObject& said, const QJsonObject& stored) const
    {
        double total = 0;
        double paid = 0;
        for (const QJsonValue& item : said["items"].toArray())
            total += item["amount"].toDouble();
        for (const QJsonValue& payment : said["payments"].toArray())
            paid += payment["sum"].toDouble();
        const double change = paid - total;
        QJsonObject payments;
        for (const QJsonValue& payment : said["payments"].toArray())
            payments[payment["type"].toString()]
                = money(payment["sum"].toDouble() - (payment["type"] == "cash" ? change : 0));
        EXPECT_EQ(stored["payments"], payments);
        EXPECT_EQ(stored["total"], money(total));
        // Over XML the register gets the cash that is left after the change.
        EXPECT_EQ(stored["change"], money(protocol == "HEX" ? std::abs(change) : 0));
    }

    const QString protocol = QString::fromUtf8(GetParam());
    Emulator emulator{QStringList{"--ofd"}};
    const QTemporaryDir journal;
};

TEST_P(Examples, StandInTheJournalAsTheySay)
{
    const QStringList files = QDir(FRSPF_EXAMPLES).entryList({"*.json"}, QDir::Files, QDir::Name);
    ASSERT_FALSE(files.isEmpty());
    for (const QString& file : files) {
        if (!isMine(file))
            continue;
        SCOPED_TRACE(file.toStdString());
        QJsonObject receipt = QJsonDocument::fromJson(readAll(FRSPF_EXAMPLES "/" + file)).object();
        const QJsonObject stored = sold(file, receipt);
        compareItems(receipt["items"].toArray(), stored["items"].toArray());
        compareSums(receipt, stored);
        receipt.remove("items");
        receipt.remove("payments");
        compare(receipt, stored, {});
    }
    const QJsonObject told = emulator.stop();
    EXPECT_EQ(told["refusals"].toArray(), QJsonArray());
    EXPECT_EQ(told["warnings"].toArray(), QJsonArray());
}

INSTANTIATE_TEST_SUITE_P(Protocols, Examples, testing::Values("HEX", "XML"),
    [](const auto& test) { return std::string(test.param); });

} // namespace
