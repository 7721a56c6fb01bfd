#include "panel/panelrig.h"

#include <gtest/gtest.h>
#include <QFile>

TEST(Panel, FaultsOfTheCommandLineAreSeenAndCleared)
{
    HexPanel rig;
    rig.faults.setPlan(*emulator::FaultPlan::parse("silence@3,answer:81@5+,answer:4.4004@2", nullptr));
    openShift(rig);
    EXPECT_EQ(code(rig, {0xA7, {}}), -1);
    EXPECT_EQ(code(rig, {0xA7, {}}), 0);
    EXPECT_EQ(code(rig, {0xA7, {}}), 81);
    QStringList seen;
    for (const QJsonValue fault : rig.ask("GET", "/v1/faults").json().value("planned").toArray())
        seen.append(fault["fault"].toString() + '=' + QString::number(fault["hits"].toInt()));
    EXPECT_EQ(seen.join(' '), "answer:4.4004@2=0 silence@3=1 answer:81@5+=1");
    EXPECT_EQ(rig.ask("DELETE", "/v1/faults").status, 204);
    EXPECT_EQ(code(rig, {0xA7, {}}), 0);
    EXPECT_EQ(rig.ask("GET", "/v1/faults").json().value("planned"), QJsonArray());
}

TEST(Panel, ARuleThatIsAddedLeavesTheOthersTheirCounts)
{
    HexPanel rig;
    openShift(rig);
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"lost","nth":1},{"mode":"answer:81","each":2}]})");
    EXPECT_EQ(code(rig, {0xA7, {}}), -1);
    const QByteArray added = R"({"rules":[{"mode":"answer:82","nth":2}]})";
    EXPECT_EQ(rig.ask("POST", "/v1/faults", added).json().value("rules")[0]["hits"], 1);
    for (const int expected : {81, 82, 81})
        EXPECT_EQ(code(rig, {0xA7, {}}), expected);
    const QJsonValue told = rig.ask("GET", "/v1/exchanges?refused=true").json().value("exchanges")[0];
    EXPECT_EQ(told["error"], "81");
    EXPECT_EQ(told["reason"], "A7: the fault answer:81");
    QByteArray many = R"({"rules":[{"mode":"lost","nth":1})";
    for (int rule = 1; rule < 998; ++rule)
        many += R"(,{"mode":"lost","nth":1})";
    EXPECT_EQ(rig.ask("POST", "/v1/faults", many + "]}").status, 400);
    EXPECT_EQ(rig.ask("GET", "/v1/faults").json().value("rules").toArray().size(), 3);
}

TEST(Panel, AFaultOfWhatIsStoredHitsNoQuestionBeforeIt)
{
    const QByteArray rule = R"({"rules":[{"mode":"lost","nth":1,"storing":true}]})";
    HexPanel hex;
    openShift(hex);
    hex.ask("PUT", "/v1/faults", rule);
    passAll(hex, {{0xA7, {}}, {0xA0, {}}, open(1), text("Текст"), finish()});
    passAll(hex, sale().first(4));
    EXPECT_EQ(code(hex, finish()), -1);
    EXPECT_EQ(hex.device.drive().last().number, 3);
    EXPECT_EQ(hex.ask("GET", "/v1/faults").json().value("rules")[0]["storing"], true);
    XmlPanel xml;
    xml.ask("PUT", "/v1/faults", rule);
    EXPECT_EQ(XmlReply{xml.pass(xml.request(2))}.verdict(), "0.0");
    EXPECT_EQ(xml.pass(xml.request(4, pa("2", 7, pa("1021", 1, "Иванова")))), "");
    EXPECT_EQ(xml.device.drive().last().number, 2);
}

namespace {

/// A position of that name and price.
Step priced(const QByteArray& name, const QByteArray& price)
{
    Step step = item("1.000", price);
    step.fields[0] = name;
    return step;
}

} // namespace

TEST(Magic, KopecksChooseTheFaultOfTheirReceipt)
{
    const QByteArray magic = to866("ТЕСТ");
    const std::tuple<QByteArray, QByteArray, int, int> rows[]
        = {{magic, "1.00", 0, 3}, {magic, "5.01", -1, 2}, {magic, "5.02", -1, 3}, {magic, "5.22", 10, 2},
            {magic, "5.99", 0, 3}, {to866("Молоко"), "5.01", 0, 3}};
    for (const auto& [name, price, error, documents] : rows) {
        HexPanel rig;
        rig.faults.setMagic(true);
        openShift(rig);
        passAll(rig, {open(2), priced(name, price), subtotal(), pay(0, price)});
        EXPECT_EQ(code(rig, finish()), error) << price.constData();
        EXPECT_EQ(rig.device.drive().last().number, documents) << price.constData();
        // It happens once.
        EXPECT_EQ(code(rig, finish()), documents == 3 ? 1 : 0) << price.constData();
    }
}

TEST(Magic, StandsInTheManual)
{
    QFile manual(FRSPF_SOURCES "/docs/spf-emulator.1");
    ASSERT_TRUE(manual.open(QIODevice::ReadOnly));
    const QByteArray text = manual.readAll();
    for (const auto& row : emulator::panel::MagicAmounts::table()) {
        const QByteArray kopecks = QByteArray::number(row.kopecks).rightJustified(2, '0');
        EXPECT_TRUE(text.contains('\n' + kopecks + '|' + row.onHex + '|' + row.onXml + '\n')) << row.kopecks;
        for (const char* const mode : {row.onHex, row.onXml})
            EXPECT_TRUE(emulator::FaultPlan::parseFault(mode)) << mode;
    }
}

TEST(Magic, HoldsOverXml)
{
    XmlPanel rig;
    rig.faults.setMagic(true);
    EXPECT_EQ(rig.openShift(), "0.0");
    const auto sell = [&rig](const char* name, const char* price) {
        const QString goods = position(price, "1.000", price).replace("Молоко", name);
        return XmlReply{rig.pass(rig.request(8, receipt(goods, price)))}.verdict();
    };
    EXPECT_EQ(sell("ТЕСТ", "7.24"), "4.4004");
    EXPECT_EQ(sell("Молоко", "7.24"), "0.0");
    EXPECT_EQ(sell("ТЕСТ", "7.02"), "Result ");
    EXPECT_EQ(rig.device.drive().last().number, 4) << "its answer was lost";
}
