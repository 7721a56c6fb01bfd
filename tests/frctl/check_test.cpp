// The command check: files of every kind, and what is said of their receipts.

#include "checkcommand.h"
#include "options.h"
#include "receipttexts.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::string joined(const QStringList& lines)
{
    return lines.join('\n').toStdString();
}

/// An example in one line.
QByteArray example(const char* name)
{
    const QByteArray text = contentOf(QStringLiteral(FRSPF_EXAMPLES "/%1").arg(QLatin1String(name)));
    return QJsonDocument::fromJson(text).toJson(QJsonDocument::Compact);
}

class Check : public testing::Test
{
protected:
    QString file(const QString& name, const QByteArray& content) const
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    Output check(const QStringList& arguments) const
    {
        Output output = prepareCheck(parseOptions(QStringList{"frctl", "check"} + arguments)).alone();
        output.lines.replaceInStrings(m_folder.path() + '/', QString());
        return output;
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(Check, TellsOfEachFileWhatItIs)
{
    const QByteArray sale = example("sale.json");
    const QByteArray pretty = contentOf(QStringLiteral(FRSPF_EXAMPLES "/sale.json"));
    const std::tuple<const char*, QByteArray, QStringList> rows[] = {
        {"empty.json", "", {"empty.json: error: is empty"}},
        {"blank.json", "\xEF\xBB\xBF \r\n", {"blank.json: error: is empty"}},
        {"bom.json", "\xEF\xBB\xBF" + pretty, {}},
        {"one.jsonl", "\n" + sale, {}},
        {"cut.json", pretty.chopped(3),
            {"cut.json: error: payments: line 27: syntax error while parsing object - "
             "unexpected end of input; expected '}'"}},
        {"list.json", "[" + sale + "]", {"list.json: error: a receipt is a JSON object"}},
        {"day.txt", sale + "\r\n\n{\"type\": 7}\r\n" + sale + "\n\xD5\xEB\n",
            {"day.txt:3: error: type: \"7\" is none of sell (0), sellReturn (1)",
                "day.txt:3: error: items: is missing", "day.txt:3: error: payments: is missing",
                "day.txt:5: error: the text is not UTF-8: byte D5 at offset 0; it looks like CP1251"}},
    };
    for (const auto& [name, content, lines] : rows) {
        const Output output = check({file(name, content)});
        EXPECT_EQ(joined(output.lines.filter(": error: ")), joined(lines));
        EXPECT_EQ(output.status, lines.isEmpty() ? ExitSuccess : ExitUsage) << name;
    }
    const QString good = file("sale.json", sale);
    const Output output = check({"missing.json", good, "/", good, "/dev/zero"});
    EXPECT_EQ(joined(output.lines.last(2)),
        "2 receipts checked: 0 with errors, 0 with warnings\nfiles that have no receipt: 3");
    EXPECT_EQ(output.json.value("unusable"), 3);
    EXPECT_EQ(output.status, ExitUsage);
}

TEST_F(Check, NamesTheProtocolThatAFindingBelongsTo)
{
    const QString name = file("sale.json", R"({"type": "sell", "paymentsPlace": "Касса", "items": [
        {"name": "Чай", "price": 1, "quantity": 1, "amount": 2, "tax": {"type": "none"}},
        {"type": "barcode", "barcode": "12", "barcodeType": "ITF"}], "payments": [{"type": 0, "sum": 1}]})");
    const QString amount = "items[0].amount: \"2\" must be price times quantity less the discount, 1.00";
    const QString place = "paymentsPlace: \"Касса\" is not carried over HEX; it must be dropped to issue the "
                          "receipt without it";
    const QString barcode = "items[1].barcodeType: \"ITF\" is not printed over XML; what is: EAN13, QR";
    const QString summary = "1 receipt checked: 1 with errors, 0 with warnings";
    EXPECT_EQ(joined(check({name}).lines),
        joined(QStringList{"sale.json: error: " + amount, "sale.json: error (XML): " + barcode,
            "sale.json: error (HEX): " + place, summary}));
    EXPECT_EQ(joined(check({name, "--protocol", "HEX"}).lines),
        joined(QStringList{"sale.json: error: " + amount, "sale.json: error: " + place, summary}));
}

TEST_F(Check, SaysItToMachines)
{
    const QString name = file(
        "sale.json", R"({"type": "sell", "taxationType": "osn", "clientInfo": {"name": "ООО"}, "items": [
        {"name": "Чай", "price": 1, "quantity": 1, "amount": 1, "tax": {"type": "none"}}],
        "payments": [{"type": 0, "sum": 1}]})");
    const auto receiptOf = [this](const QStringList& arguments) {
        const Output output = check(arguments);
        return output.json.value("receipts").toArray().at(0).toObject();
    };
    const QJsonObject receipt = receiptOf({name});
    EXPECT_EQ(receipt.value("line"), QJsonValue::Null);
    EXPECT_EQ(receipt.value("acceptedOver"), QJsonArray{"XML"});
    EXPECT_EQ(receipt.value("errors").toArray().at(0).toObject(),
        (QJsonObject{{"path", "clientInfo.name"}, {"given", "ООО"}, {"protocol", "HEX"},
            {"text", "is not carried over HEX; it must be dropped to issue the receipt without it"}}));
    EXPECT_EQ(receipt.value("warnings").toArray().size(), 2);
    EXPECT_EQ(receiptOf({name, "--cashier", "Иванова"}).value("warnings").toArray().size(), 1);
    const QString plain = file("plain.json", contentOf(name).replace(R"("taxationType": "osn", )", ""));
    EXPECT_EQ(receiptOf({plain}).value("warnings").toArray().last()["path"], "taxationType");
    // The receipt opens the shift, where HEX has 48 characters of the name.
    EXPECT_EQ(receiptOf({name, "--cashier", QString(49, u'И')}).value("warnings").toArray().size(), 2);
    const QStringList dropped{name, "--protocol", "HEX", "--drop", "clientInfo.name", "--cashier", "Иванова"};
    EXPECT_EQ(receiptOf(dropped).value("acceptedOver"), QJsonArray{"HEX"});
    EXPECT_EQ(receiptOf(dropped + QStringList{"--strict"}).value("errors").toArray().size(), 1);
}

} // namespace
