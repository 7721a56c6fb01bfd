#include "panel/panelrig.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QUrl>

using XmlPanel = PanelRig<XmlRig>;

TEST(Panel, SwitchesAreWhatTheHostMeets)
{
    struct Row
    {
        const char* path;
        const char* body;
        Step step;
        /// -1 for none that comes.
        int code;
        QByteArray field;
    };
    const Step time{0xA7, {}};
    const Row rows[] = {
        {"paper", R"({"state":"out"})", open(2), 8, ""},
        {"paper", R"({"state":"in"})", {0x60, {"Иванова"}}, 0, ""},
        {"cover", R"({"open":true})", open(2), 9, ""},
        {"cover", R"({"open":false})", {0x60, {"Иванова"}}, 0, ""},
        {"ofd", R"({"reachable":true})", {0xA4, {"8"}}, 0, "1"},
        {"drawer", R"({"open":true})", {0xA8, {}}, 0, "1"},
        {"drawer", R"({"open":false})", {0xA8, {}}, 0, "0"},
        {"marks", R"({"rules":[{"pattern":"^0104","result":13}]})", check(), 0, "13"},
        {"marks", R"({"rules":[{"pattern":"^99","result":0}]})", check(), 0, "15"},
        {"clock", R"({"time":"2024-03-02T09:30:00"})", time, 0, "020324"},
        {"clock", R"({"speed":2})", open(2), 10, ""},
        {"power", R"({"offAt":"beforeStoring"})", {0x6A, {""}}, -1, ""},
        {"power", R"({"state":"on"})", {0xA4, {"1"}}, 0, "2"},
        {"power", R"({"offAt":"afterStoring"})", {0xA4, {"1"}}, -1, ""},
        {"power", R"({"state":"on"})", open(2), 1, ""},
        {"power", R"({"state":"off"})", time, -1, ""},
    };
    HexPanel rig;
    openShift(rig);
    for (const Row& row : rows) {
        const Served served = rig.ask("PUT", QByteArray("/v1/") + row.path, row.body);
        EXPECT_EQ(served.status, 200) << served.text();
        const Reply reply = rig.parse(rig.pass(rig.frame(row.step)));
        EXPECT_EQ(reply.code, row.code) << row.path << ' ' << row.body;
        EXPECT_EQ(reply.fields.value(0), row.field) << row.path << ' ' << row.body;
    }
}

TEST(Panel, TheClockRunsFaster)
{
    HexPanel rig;
    rig.ask("PUT", "/v1/clock", R"({"speed":3600})");
    rig.clock.advance(2000);
    EXPECT_EQ(rig.ask("GET", "/v1/clock").json().value("time"), "2024-03-01T11:00:00");
    rig.ask("PUT", "/v1/clock", R"({"speed":1})");
    rig.clock.advance(2000);
    EXPECT_EQ(rig.ask("GET", "/v1/clock").json().value("time"), "2024-03-01T11:00:02");
}

TEST(Panel, PowerGoesBeforeOrAfterADocumentIsStored)
{
    for (const auto& [when, documents] : {std::pair{"beforeStoring", 2}, std::pair{"afterStoring", 3}}) {
        HexPanel rig;
        openShift(rig);
        passAll(rig, sale().first(4));
        rig.ask("PUT", "/v1/power", QByteArray(R"({"offAt":")") + when + "\"}");
        EXPECT_EQ(code(rig, finish()), -1);
        EXPECT_EQ(code(rig, {0xA7, {}}), -1);
        const QJsonObject state = rig.ask("GET", "/v1/state").json();
        EXPECT_EQ(state.value("power").toObject().value("state"), "off");
        EXPECT_EQ(state.value("drive").toObject().value("documents"), documents);
        rig.ask("PUT", "/v1/power", R"({"state":"on"})");
        EXPECT_EQ(code(rig, {0x00, {"010324", "090000"}}), 0);
        EXPECT_EQ(code(rig, finish()), documents == 2 ? 0 : 1);
    }
}

TEST(Panel, ALateAnswerGoesWithThePower)
{
    HexPanel rig;
    openShift(rig);
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"late","nth":1}]})");
    EXPECT_EQ(code(rig, {0xA7, {}}), -1);
    rig.ask("PUT", "/v1/power", R"({"state":"off"})");
    rig.ask("PUT", "/v1/power", R"({"state":"on"})");
    EXPECT_EQ(rig.pass(rig.frame({0xA7, {}})).count('\x02'), 1);
}

TEST(Panel, ADocumentLeadsToItsFramesAndRefusals)
{
    HexPanel rig;
    openShift(rig);
    passAll(rig, sale());
    EXPECT_EQ(code(rig, subtotal()), 1);
    // One that the line gave no sense to stands before the request that came next.
    rig.desk.passed(trace::Direction::ToRegister,
        "\x02spoils\x03"
        "00");
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

TEST(Panel, TapeTellsWhichDocumentAPageIsOf)
{
    HexPanel rig;
    openShift(rig);
    rig.ask("PUT", "/v1/paper", R"({"state":"nearEnd","linesLeft":4})");
    passAll(rig, sale().first(4));
    EXPECT_EQ(code(rig, finish()), 8);
    rig.ask("PUT", "/v1/paper", R"({"state":"in"})");
    passAll(rig, {finish(), {0x60, {"Иванова"}}});
    QList<int> documents;
    for (const QJsonValue entry : rig.ask("GET", "/v1/tape").json().value("entries").toArray())
        documents.append(entry["document"].toInt());
    EXPECT_EQ(documents, QList<int>({2, 3, 3, 0}));
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
        QList<int> documents;
        for (const QJsonValue entry : rig.ask("GET", "/v1/tape").json().value("entries").toArray())
            documents.append(entry["document"].toInt());
        EXPECT_EQ(documents, pieces);
    };
    HexPanel hex;
    openShift(hex);
    passAll(hex, sale().first(4));
    hex.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"paper-ends:4","nth":1}]})");
    EXPECT_EQ(code(hex, finish()), 8);
    expectTorn(hex, 3, "8", {2, 3});
    XmlPanel xml;
    xml.openShift();
    xml.ask("PUT", "/v1/paper", R"({"state":"nearEnd","linesLeft":4})");
    EXPECT_EQ(
        XmlReply{xml.pass(xml.request(8, receipt(position("5.00", "1.000", "5.00"), "5.00")))}.verdict(),
        "3.8");
    expectTorn(xml, 3, "3.8", {2, 3});
    // The rest of it comes with the paper; of a report that is torn, too.
    xml.ask("PUT", "/v1/paper", R"({"state":"in"})");
    xml.ask("PUT", "/v1/paper", R"({"state":"nearEnd","linesLeft":2})");
    xml.pass(xml.request(6, pa("5", 7, pa("1021", 1, "Иванова"))));
    xml.ask("PUT", "/v1/paper", R"({"state":"in"})");
    expectTorn(xml, 3, "3.8", {2, 3, 3, 4, 4});
}

TEST(Panel, AFaultThatAnswersAnErrorIsToldAsOne)
{
    HexPanel rig;
    openShift(rig);
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"answer:81","nth":1}]})");
    EXPECT_EQ(code(rig, open(2)), 81);
    const QJsonObject exchange
        = rig.ask("GET", "/v1/exchanges?refused=true").json().value("exchanges")[0].toObject();
    EXPECT_EQ(exchange.value("error"), "81");
    EXPECT_EQ(exchange.value("reason"), "20: the fault answer:81");
}

TEST(Panel, EventsComeInTheirOrderAndOfTheirRegister)
{
    HexPanel rig;
    emulator::Register other(rig.clock);
    emulator::HostWatch otherWatch(other);
    rig.panel.add(other, otherWatch, rig.faults);
    http::Request request = http::Request::of("GET", "/v1/registers/1/events");
    const http::Answer answer = rig.panel.site().answer(request);
    openShift(rig);
    EXPECT_EQ(code(rig, subtotal()), 1);
    rig.ask("PUT", "/v1/registers/2/paper", R"({"state":"out"})");
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"restart","nth":1}]})");
    passAll(rig, {{0xA7, {}}});
    ASSERT_TRUE(std::holds_alternative<std::shared_ptr<http::Stream>>(answer));
    QStringList names;
    for (const QByteArray& line : std::get<std::shared_ptr<http::Stream>>(answer)->take().split('\n')) {
        if (line.startsWith("event: "))
            names.append(line.mid(7));
    }
    EXPECT_EQ(names.join(' '), "exchange document tape exchange exchange refusal state exchange fault");
}

namespace {

const Step started{0x00, {"010324", "090000"}};

QList<int> documentsOfTape(HexPanel& rig)
{
    QList<int> documents;
    for (const QJsonValue entry : rig.ask("GET", "/v1/tape").json().value("entries").toArray())
        documents.append(entry["document"].toInt());
    return documents;
}

/// What led to a document, by the numbers of the exchanges.
QList<int> exchangesOf(HexPanel& rig, int document)
{
    QList<int> numbers;
    const QJsonObject found = rig.ask("GET", "/v1/documents/" + QByteArray::number(document)).json();
    for (const QJsonValue exchange : found.value("exchanges").toArray())
        numbers.append(exchange["number"].toInt());
    return numbers;
}

} // namespace

TEST(Panel, NothingLeadsToADocumentOfAnotherTime)
{
    HexPanel rig;
    openShift(rig);
    rig.ask("PUT", "/v1/snapshots/open");
    passAll(rig, {open(2), item("1.000", "5.00")});
    rig.ask("POST", "/v1/snapshots/open/restore");
    passAll(rig, QList<Step>{started} + sale("7.00"));
    EXPECT_EQ(exchangesOf(rig, 3), QList<int>({5, 6, 7, 8, 9, 10})) << "the receipt of 5.00 was never begun";
    EXPECT_EQ(exchangesOf(rig, 2), QList<int>({1, 2})) << "it is there before and after";
    EXPECT_EQ(documentsOfTape(rig), QList<int>({2, 3}));
    rig.ask("PUT", "/v1/snapshots/sold");
    rig.ask("POST", "/v1/reset");
    const QJsonObject tape = rig.ask("GET", "/v1/tape").json();
    EXPECT_EQ(tape.value("entries"), QJsonArray()) << "a new register has nothing on its tape";
    EXPECT_EQ(tape.value("last"), 2) << "numbers count on";
    EXPECT_EQ(rig.ask("GET", "/v1/tape.txt").body, "");
    EXPECT_EQ(rig.ask("GET", "/v1/tape/2.svg").status, 404);
    EXPECT_EQ(rig.ask("GET", "/v1/exchanges/10").json().value("document"), QJsonValue());
    openShift(rig);
    passAll(rig, sale("9.00"));
    EXPECT_EQ(exchangesOf(rig, 3).size(), 5);
    rig.ask("POST", "/v1/snapshots/sold/restore");
    EXPECT_EQ(rig.ask("GET", "/v1/documents/3").json().value("total"), "7.00");
    EXPECT_EQ(exchangesOf(rig, 3), QList<int>()) << "those there are sold for 9.00";
    EXPECT_EQ(documentsOfTape(rig), QList<int>({0, 0})) << "the paper is that of the register before";
}

TEST(Panel, RestoreBringsBackAlsoDocumentsThatTheDriveHasNoPagesOf)
{
    HexPanel rig;
    passAll(rig, {started});
    for (int report = 0; report < 300; ++report)
        code(rig, {0x6A, {""}});
    rig.ask("PUT", "/v1/snapshots/late");
    rig.ask("POST", "/v1/reset");
    EXPECT_EQ(rig.ask("GET", "/v1/documents/301").status, 404);
    rig.ask("POST", "/v1/snapshots/late/restore");
    for (const char* const number : {"2", "301"})
        EXPECT_GT(
            rig.ask("GET", QByteArray("/v1/documents/") + number).json().value("page").toArray().size(), 5);
}

TEST(Panel, ResetPutsInAnotherDriveAndEndsAllFaults)
{
    HexPanel rig;
    rig.faults.setPlan(*emulator::FaultPlan::parse("lost@90+", nullptr));
    openShift(rig);
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"lost","nth":50}]})");
    rig.ask("PUT", "/v1/ofd", R"({"reachable":true})");
    const auto drive = [](const QJsonObject& state) { return state.value("drive")["number"].toString(); };
    const QString first = drive(rig.ask("GET", "/v1/state").json());
    const QJsonObject state = rig.ask("POST", "/v1/reset").json();
    EXPECT_NE(drive(state), first);
    EXPECT_TRUE(drive(state).startsWith("9999"));
    EXPECT_EQ(state.value("faultRules"), 0);
    EXPECT_EQ(state.value("plannedFaults"), 0);
    EXPECT_EQ(state.value("ofd")["reachable"], false) << "as at the start";
    const QJsonValue registration = rig.ask("GET", "/v1/documents/1").json().value("tags");
    EXPECT_TRUE(QJsonDocument(registration.toArray()).toJson().contains(drive(state).toLatin1()));
}

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

TEST(Panel, WhatAHostChangesIsToldWithoutBeingAsked)
{
    HexPanel rig;
    rig.ask("PUT", "/v1/paper", R"({"state":"nearEnd","linesLeft":500})");
    const auto partsOf = [&rig](const Step& step) {
        http::Request request = http::Request::of("GET", "/v1/events?event=state");
        const auto stream = std::get<std::shared_ptr<http::Stream>>(rig.panel.site().answer(request));
        EXPECT_EQ(code(rig, step), 0);
        QStringList parts;
        for (const QByteArray& line : stream->take().split('\n')) {
            if (line.startsWith("data: "))
                parts.append(QJsonDocument::fromJson(line.mid(6)).object().value("part").toString());
        }
        return parts.join(' ');
    };
    EXPECT_EQ(partsOf(started), "");
    EXPECT_EQ(partsOf({0x6B, {"Иванова", ""}}), "paper");
    EXPECT_EQ(partsOf({0x80, {}}), "drawer");
    EXPECT_EQ(partsOf({0xA8, {}}), "");
    rig.clock.advance(20'000);
    EXPECT_EQ(partsOf({0xA8, {}}), "drawer");
    rig.ask("PUT", "/v1/drawer", R"({"open":true})");
    rig.clock.advance(20'000);
    EXPECT_EQ(partsOf({0x80, {}}), "") << "it was held open";
    rig.clock.advance(20'000);
    EXPECT_EQ(partsOf({0xA8, {}}), "drawer") << "and is shut after a host had it opened";
}

TEST(Panel, ExchangesTakeSoMuchMemoryAndNoMore)
{
    using emulator::panel::ExchangeLog;
    const QByteArray noise = QByteArray(1, '\x02') + QByteArray(60'000, 'x')
        + "\x03"
          "00";
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

TEST(Panel, SnapshotsBringBackAll)
{
    HexPanel rig;
    openShift(rig);
    rig.ask("PUT", "/v1/snapshots/morning");
    passAll(rig, QList<Step>{{0xA2, {"900", "0", "new"}}} + sale().first(4));
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"lost","nth":1}]})");
    EXPECT_EQ(code(rig, finish()), -1);
    rig.ask("POST", "/v1/snapshots/morning/restore");
    EXPECT_FALSE(rig.device.parameters().value(900, 0)) << "it was written later";
    EXPECT_EQ(code(rig, open(2)), 1) << "not started";
    passAll(rig, QList<Step>{{0x00, {"010324", "090000"}}} + sale("5.00"));
    const QJsonObject sold = rig.ask("GET", "/v1/documents/3").json();
    EXPECT_EQ(sold.value("total"), "5.00");
    EXPECT_EQ(sold.value("exchanges").toArray().size(), 7) << "those of the time that never was are not its";
    EXPECT_EQ(rig.ask("GET", "/v1/conformance").json().value("warnings"), QJsonArray())
        << "nobody need ask what became of a receipt that never was";
    rig.ask("POST", "/v1/reset");
    EXPECT_EQ(rig.ask("GET", "/v1/documents").json().value("documents").toArray().size(), 1);
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
    struct Row
    {
        QByteArray name;
        QByteArray price;
        int code;
        int documents;
    };
    const Row rows[] = {{magic, "1.00", 0, 3}, {magic, "5.01", -1, 2}, {magic, "5.02", -1, 3},
        {magic, "5.22", 10, 2}, {magic, "5.99", 0, 3}, {to866("Молоко"), "5.01", 0, 3}};
    for (const Row& row : rows) {
        HexPanel rig;
        rig.faults.setMagic(true);
        openShift(rig);
        passAll(rig, {open(2), priced(row.name, row.price), subtotal(), pay(0, row.price)});
        EXPECT_EQ(code(rig, finish()), row.code) << row.price.constData();
        EXPECT_EQ(rig.device.drive().last().number, row.documents) << row.price.constData();
        // It happens once.
        EXPECT_EQ(code(rig, finish()), row.documents == 3 ? 1 : 0) << row.price.constData();
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
