#include "panel/panelrig.h"

#include <gtest/gtest.h>
#include <QUrl>

TEST(Panel, ADocumentLeadsToItsFramesAndRefusals)
{
    HexPanel rig;
    openShift(rig);
    passAll(rig, sale());
    EXPECT_EQ(code(rig, subtotal()), 1);
    // One that the line gave no sense to stands before the request that came next.
    rig.desk.passed(trace::Direction::ToRegister, "\x02spoils\u000300");
    passAll(rig, sale().first(4));
    EXPECT_EQ(rig.pass("\x05"), "\x06");
    passAll(rig, {finish()});
    const QJsonObject document = rig.ask("GET", "/v1/documents/4").json();
    EXPECT_EQ(document.value("refusals").toArray(), QJsonArray{8});
    QStringList texts;
    for (const QJsonValue exchange : document.value("exchanges").toArray()) {
        for (const QJsonValue frame : exchange["frames"].toArray())
            texts.append(
                (frame["direction"] == "toHost" ? "<" : ">") + frame["text"].toString().section(' ', 1, 1));
    }
    EXPECT_EQ(texts.join(" ").toStdString(),
        ">Subtotal(34) <Subtotal(34) >(s\x03) >OpenDocument(20) <OpenDocument(20) >AddPaymentObject(30) "
        "<AddPaymentObject(30) >Subtotal(34) <Subtotal(34) >Payment(35) <Payment(35) >ENQ <ACK >FinishDocument(22) "
        "<FinishDocument(22)");
    const QJsonObject refused = rig.ask("GET", "/v1/exchanges?refused=true").json();
    EXPECT_EQ(refused.value("exchanges").toArray().size(), 1);
    EXPECT_EQ(refused.value("exchanges")[0]["reason"], "34: no document is open");
}

TEST(Panel, DocumentsAreFoundByWhatTheySay)
{
    HexPanel rig;
    openShift(rig);
    passAll(rig, sale("15.50") + sale("7.00"));
    const QString sign = rig.ask("GET", "/v1/documents/3").json().value("fiscalSign").toString();
    const std::pair<QString, QList<int>> rows[] = {
        {"", {4, 3, 2, 1}},
        {"number=3", {3}},
        {"sum=15.50", {3}},
        {"sum=15.5", {3}},
        {"id=" + sign, {3}},
        {"id=" + sign.chopped(1), {}},
        {"id=a@b.example", {4, 3}},
        {"text=" + QUrl::toPercentEncoding("молоко"), {4, 3}},
        {"text=" + QUrl::toPercentEncoding("ОТКРЫТИИ"), {2}},
        {"text=" + QUrl::toPercentEncoding("молоко") + "&sum=7.00", {4}},
        {"text=nowhere", {}},
    };
    for (const auto& [query, numbers] : rows) {
        QList<int> found;
        const QJsonObject answer = rig.ask("GET", "/v1/documents?" + query.toLatin1()).json();
        for (const QJsonValue document : answer.value("documents").toArray())
            found.append(document["number"].toInt());
        EXPECT_EQ(found, numbers) << query.toStdString();
    }
}

TEST(Panel, TornReceiptLeadsToItsExchangeWithTheErrorThatWasAnswered)
{
    const auto expectTorn = [](auto& rig, int document, const char* error, QList<int> pieces) {
        const QByteArray path = "/v1/documents/" + QByteArray::number(document);
        const QJsonObject torn = rig.ask("GET", path).json();
        const QJsonArray refusals = torn.value("refusals").toArray();
        ASSERT_EQ(refusals.size(), 1);
        const QJsonObject refused
            = rig.ask("GET", "/v1/exchanges/" + QByteArray::number(refusals.at(0).toInt())).json();
        EXPECT_EQ(refused.value("error"), error);
        EXPECT_TRUE(refused.value("reason").toString().endsWith(": no paper; the document is stored"));
        EXPECT_EQ(refused.value("document"), document);
        EXPECT_EQ(rig.ask("GET", "/v1/conformance").json().value("refused"), 0)
            << "it is not its host's fault";
        EXPECT_EQ(documentsOfTape(rig), pieces);
    };
    HexPanel hex;
    openShift(hex);
    passAll(hex, sale().first(4));
    hex.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"paper-ends:4","nth":1}]})");
    EXPECT_EQ(code(hex, finish()), 8);
    expectTorn(hex, 3, "8", {2, 3});
    hex.ask("PUT", "/v1/paper", R"({"state":"in"})");
    passAll(hex, {finish(), {0x60, {"Иванова"}}});
    EXPECT_EQ(documentsOfTape(hex), QList<int>({2, 3, 3, 0}));
    XmlPanel xml;
    xml.openShift();
    xml.ask("PUT", "/v1/paper", R"({"state":"nearEnd","linesLeft":4})");
    const auto sell = [&xml] {
        return XmlReply{xml.pass(xml.request(8, receipt(position("5.00", "1.000", "5.00"), "5.00")))}
            .verdict();
    };
    EXPECT_EQ(sell(), "3.8");
    expectTorn(xml, 3, "3.8", {2, 3});
    // The rest of it comes with the paper; of a report that is torn, too.
    xml.ask("PUT", "/v1/paper", R"({"state":"in"})");
    xml.ask("PUT", "/v1/paper", R"({"state":"nearEnd","linesLeft":2})");
    xml.pass(xml.request(6, pa("5", 7, pa("1021", 1, "Иванова"))));
    xml.ask("PUT", "/v1/paper", R"({"state":"in"})");
    expectTorn(xml, 3, "3.8", {2, 3, 3, 4, 4});
    // What has no paper to begin with is stored nowhere.
    xml.ask("PUT", "/v1/paper", R"({"state":"out"})");
    EXPECT_EQ(sell(), "3.8");
    EXPECT_EQ(xml.ask("GET", "/v1/conformance").json().value("refused"), 1);
}

TEST(Panel, ExchangesTakeSoMuchMemoryAndNoMore)
{
    using emulator::panel::ExchangeLog;
    const QByteArray noise = QByteArray(1, '\x02') + QByteArray(60'000, 'x') + "\u000300";
    ExchangeLog loose;
    for (int count = 0; count < 90; ++count)
        loose.passed(trace::Direction::ToRegister, noise);
    loose.note({});
    EXPECT_LT(loose.youngest()->frames.size(), 20) << "5 MB that no request claims";
    ExchangeLog signs;
    ExchangeLog reasons;
    for (int count = 0; count < 300; ++count) {
        signs.note({});
        for (int sign = 0; sign < 400; ++sign)
            signs.passed(trace::Direction::ToRegister, "\x05");
        emulator::panel::LoggedExchange refused;
        refused.exchange.reason = QString(50'000, 'x');
        reasons.note(refused);
    }
    EXPECT_GT(signs.first(), 10);
    EXPECT_GT(reasons.first(), 100);
    EXPECT_EQ(reasons.last(), 300);
}
