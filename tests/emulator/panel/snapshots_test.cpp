#include "panel/panelrig.h"

#include <gtest/gtest.h>

namespace {

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
    passAll(rig, QList<Step>{{0xA2, {"900", "0", "new"}}} + sale("5.00").first(4));
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"lost","nth":1}]})");
    EXPECT_EQ(code(rig, finish()), -1);
    rig.ask("POST", "/v1/snapshots/open/restore");
    EXPECT_FALSE(rig.device.parameters().value(900, 0)) << "it was written later";
    EXPECT_EQ(code(rig, open(2)), 1) << "not started";
    passAll(rig, QList<Step>{started} + sale("7.00"));
    EXPECT_EQ(exchangesOf(rig, 3), QList<int>({9, 10, 11, 12, 13, 14, 15})) << "that of 5.00 never was";
    EXPECT_EQ(rig.ask("GET", "/v1/conformance").json().value("warnings"), QJsonArray())
        << "nobody need ask what became of a receipt that never was";
    EXPECT_EQ(exchangesOf(rig, 2), QList<int>({1, 2})) << "it is there before and after";
    EXPECT_EQ(documentsOfTape(rig), QList<int>({2, 0, 3})) << "the paper of 5.00 is no document's";
    rig.ask("PUT", "/v1/snapshots/sold");
    rig.ask("POST", "/v1/reset");
    const QJsonObject tape = rig.ask("GET", "/v1/tape").json();
    EXPECT_EQ(tape.value("entries"), QJsonArray()) << "a new register has nothing on its tape";
    EXPECT_EQ(tape.value("last"), 3) << "numbers count on";
    EXPECT_EQ(rig.ask("GET", "/v1/tape.txt").body, "");
    EXPECT_EQ(rig.ask("GET", "/v1/tape/3.svg").status, 404);
    EXPECT_EQ(rig.ask("GET", "/v1/exchanges/15").json().value("document"), QJsonValue());
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
