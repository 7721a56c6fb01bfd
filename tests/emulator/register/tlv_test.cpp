// Documents as the fiscal drive keeps them: bytes, fields of the journal, text.

#include "kept.h"
#include "register/documentview.h"
#include "register/storeddocument.h"
#include "rig.h"

#include <QJsonArray>

using emulator::StoredDocument;
namespace documentview = emulator::documentview;
namespace entrytags = emulator::entrytags;
namespace tlv = emulator::tlv;

namespace {

QJsonObject receiptWith(const QJsonObject& fields)
{
    return {{"type", "sell"}, {"total", "1.00"}, {"payments", QJsonObject()}, {"items", QJsonArray{fields}}};
}

} // namespace

TEST(Tlv, HasOneFormForEachKindOfValue)
{
    const std::pair<const char*, QJsonObject> forms[] = {
        {"0604 0300 8fa8a2", {{"1030", "Пив"}}},
        {"0604 0000", {{"1030", ""}}},
        {"fa03 0c00 37373031323334353637 2020", {{"1018", "7701234567"}}},
        {"cc04 0000", {{"1228", ""}}},
        {"1e04 0100 02", {{"1054", 2}}},
        {"1004 0400 ffffffff", {{"1040", qint64(4294967295)}}},
        {"fc03 0100 00", {{"1020", "0.00"}}},
        {"fc03 0200 3930", {{"1020", "123.45"}}},
        {"fc03 0300 000001", {{"1020", "655.36"}}},
        {"ff03 0200 0301", {{"1023", "0.001"}}},
        {"ff03 0300 03e803", {{"1023", "1.000"}}},
        {"ff03 0200 000c", {{"1023", "12"}}},
        {"f403 0400 1099e165", {{"1012", "2024-03-01T09:00:00"}}},
        {"3504 0600 0000 499602d2", {{"1077", "1234567890"}}},
        {"8b04 0600 1905 0200 04aa", {{"1163", QJsonObject{{"1305", "04aa"}}}}},
        // A tag that is not in the table.
        {"7017 0200 04aa", {{"6000", "04aa"}}},
        {"2304 0500 3704 0100 05 2304 0000",
            {{"1059", QJsonArray{QJsonObject{{"1079", "0.05"}}, QJsonObject()}}}},
    };
    for (const auto& [bytes, requisites] : forms) {
        EXPECT_EQ(tlv::encode(requisites).toHex(), QByteArray::fromHex(bytes).toHex());
        EXPECT_EQ(tlv::decode(QByteArray::fromHex(bytes)), requisites) << bytes;
    }
}

TEST(Tlv, HoldsNoOtherValues)
{
    const std::pair<int, QJsonValue> values[]
        = {{1054, -1}, {1054, 256}, {1054, 1.5}, {1054, "1"}, {1040, qint64(4294967296)}, {1020, "-0.01"},
            {1020, "1.5"}, {1020, 1.50}, {1023, "-1.000"}, {1023, "1."}, {1012, "2024-02-30T00:00:00"},
            {1012, "2024-03-01T09:00:00Z"}, {1012, "1969-12-31T23:59:59"}, {1077, "123"},
            {1077, "9999999999"}, {1163, "04"}, {1305, "0"}, {0, "04"}, {65536, "04"}};
    for (const auto& [tag, value] : values)
        EXPECT_FALSE(tlv::holds(tag, value)) << tag << ' ' << value.toVariant().toString().toStdString();
}

TEST(Tlv, RefusesWhatIsBroken)
{
    QByteArray deep;
    for (int depth = 0; depth < 5000; ++depth)
        deep.prepend(QByteArray("\x23\x04", 2) + static_cast<char>(deep.size() & 0xFF)
            + static_cast<char>(deep.size() >> 8));
    EXPECT_FALSE(tlv::decode(deep)) << "too deep";
    for (const char* const bytes : {"06", "0604 01", "0604 0200 8f", "1e04 0200 0100", "1e04 0000",
             "1004 0300 010000", "fc03 0000", "fc03 0800 0000000000000001", "ff03 0100 03", "ff03 0200 0a01",
             "3504 0600 0001 499602d2", "f403 0300 000000", "2304 0300 060401", "1e04 0100 01 1e04 0100 01"})
        EXPECT_FALSE(tlv::decode(QByteArray::fromHex(bytes))) << bytes;
}

TEST(Documents, LoseNothingOfOddEntries)
{
    const QJsonObject odd[] = {
        {{"unit", 300}, {"discount", "-1.00"}, {"fullPrice", "2.00"}, {"barcode", "46"}, {"sum", "-1.00"}},
        {{"agent", QJsonObject{{"1222", "abc"}, {"x", "y"}, {"1073", ""}, {"1226", "77"}}}},
        {{"name", "Чай «Лес» \\u00ab"}, {"measure", "🍞"}, {"country", "a\\b"}, {"barcode", "\\"}},
        {{"agent", QJsonObject{{"1222", 300}}}, {"goodsCode", QJsonObject{{"1399", "0a"}}}},
    };
    for (const QJsonObject& fields : odd) {
        const auto requisites = tlv::decode(tlv::encode(entrytags::toTags(receiptWith(fields))));
        ASSERT_TRUE(requisites.has_value());
        EXPECT_EQ(QJsonDocument(entrytags::fromTags(*requisites)).toJson().toStdString(),
            QJsonDocument(receiptWith(fields)).toJson().toStdString());
    }
}

TEST(Documents, AreKeptWholeAndShown)
{
    Rig rig;
    rig.openShift();
    rig.run(
        {check(), open(2), {0x3C, {"64", "", "", "", "", "", "", "", "+70000000000", "Ферма", "7701234567"}},
            bind(), item("2.000", "60.05", "2", "33"), item("1.000", "61.00", "11"), subtotal(),
            pay(1, "50.00"), pay(0, "200.00"), finish()});
    rig.run({open(3, 1, "1"), item("1.000", "7.00"), subtotal(), pay(0, "7.00"), finish()});
    rig.run({{0x61, {"", ""}}, {0x6A, {to866("Иванова")}}});
    expectAllKept(rig.device);

    const QList<StoredDocument> documents = rig.device.drive().documentsFrom(1);
    const QString sign = documents.at(2).record.sign;
    const QString sale = documentview::whole(documents.at(2));
    EXPECT_EQ(missingFrom(sale,
                  {"1000 наименование документа: КАССОВЫЙ ЧЕК\n", "1012 дата, время: 2024-03-01T09:00:00\n",
                      "1018 ИНН пользователя: 7701234567\n", "1031 сумма по чеку (БСО) наличными: 131.10\n",
                      "1037 регистрационный номер ККТ: 0000000001012345\n",
                      "1041 номер ФН: 9999078900001234\n", "1054 признак расчета: 1 (ПРИХОД)\n",
                      "1055 применяемая система налогообложения: 1 (ОСН)\n", "1059 предмет расчета:\n",
                      "  1023 количество предмета расчета: 2.000\n", "  1199 ставка НДС: 2 (НДС 10%)\n",
                      "  1224 данные поставщика:\n", "    1171 телефон поставщика: +70000000000\n",
                      "  2000 код маркировки: 0104601234567890215abc␝93test\n", "1077 ФПД: " + sign + '\n',
                      "1085 наименование дополнительного реквизита пользователя: СДАЧА\n",
                      "значение дополнительного реквизита пользователя: 68.90\n",
                      "1103 сумма НДС чека по ставке 10%: 10.92\n",
                      "1115 суммы НДС чека:\n  1119 сумма НДС чека по ставке:\n",
                      "    1120 размер НДС чека: 11.00\n", "    1199 ставка НДС: 11 (НДС 22%)\n",
                      "КАССОВЫЙ ЧЕК\n"}),
        "")
        << sale.toStdString();
    const QString list = documentview::list(documents);
    EXPECT_EQ(missingFrom(list,
                  {"     1  2024-03-01 09:00:00  ОТЧЕТ О РЕГИСТРАЦИИ", "\n     2  ",
                      "ОТЧЕТ ОБ ОТКРЫТИИ СМЕНЫ", "КАССОВЫЙ ЧЕК, ПРИХОД ", " 181.10  " + sign + "\n",
                      "КАССОВЫЙ ЧЕК, ВОЗВРАТ ПРИХОДА", " 7.00  "}),
        "")
        << list.toStdString();
    const QJsonObject json = documentview::wholeJson(documents.at(2));
    EXPECT_EQ(json["total"], "181.10");
    EXPECT_EQ(json["tags"][0],
        (QJsonObject{{"tag", 1000}, {"name", "наименование документа"}, {"value", "КАССОВЫЙ ЧЕК"}}));
    EXPECT_EQ(documentview::listJson(documents).at(2)["fiscalSign"], sign);
}
