#include "register/deviceclock.h"
#include "register/parametertable.h"
#include "rig.h"

#include <gtest/gtest.h>

TEST(Service, ClockThatNobodySetsStaysAsFarAhead)
{
    /// Time passes also between two looks at it.
    struct Restless : emulator::Clock
    {
        qint64 milliseconds() const override { return ++now; }
        mutable qint64 now = 1'000'000;
    };
    const Restless source;
    emulator::DeviceClock clock(source);
    clock.setOffset(5000);
    EXPECT_EQ(clock.offset(), 5000);
    clock.setSpeed(3);
    EXPECT_GT(clock.offset(), 5000);
}

TEST(Service, ParametersKeepTheirLimits)
{
    Rig rig;
    rig.start();
    // What else is refused the table of the driver's parameters tells, and HexStrict.SaysWhy.
    const std::tuple<QByteArray, QByteArray, QByteArray, int> cases[]{{"1", "0", "10000", 3},
        {"1", "0", "x", 3}, {"3", "0", "Ю", 0}, {"20", "3", to866("Тихий переулок"), 0}, {"11", "0", "0", 0},
        {"11", "0", "-1", 3}, {"1", "1", "1", 3}, {"65536", "0", "x", 3}, {"82", "0", "290224", 0}};
    for (const auto& [number, row, value, code] : cases) {
        const QByteArray before = rig.ask(0xA1, {number, row});
        EXPECT_EQ(rig.code({0xA2, {number, row, value}}), code) << number.data() << ' ' << row.data();
        EXPECT_EQ(rig.ask(0xA1, {number, row}), code == 0 ? value : before) << number.data();
    }
    EXPECT_EQ(rig.code({0xA1, {"9", "0"}}), 3);
    // Every parameter leaves the factory with a value that it would take.
    for (const emulator::ParameterEntry& entry : emulator::parameterTable()) {
        const QString value = rig.device.parameters().text(entry.number, entry.row);
        EXPECT_EQ(rig.device.parameters().write(entry.number, entry.row, value),
            entry.readOnly ? emulator::Refusal::WrongState : emulator::Refusal::None)
            << entry.number << ' ' << entry.row;
    }
}

TEST(Service, RegistrationChangesWhatIsAnswered)
{
    Rig rig;
    rig.start();
    const QList<QByteArray> was = rig.send({0xC0, {}}).fields;
    ASSERT_EQ(was.size(), 13);
    EXPECT_EQ(rig.ask(0xC0, {"10"}), "35");
    const QByteArray name = to866(QStringLiteral("Иванова"));
    // The order in which a host sends back what it was told.
    const auto request = [&](const QByteArray& systems, const QByteArray& inn) {
        return Step{0x08,
            {"", was[4], inn, was[0], name, "", was[5], was[6], systems, was[11], was[10], was[7], was[8],
                was[1], was[12], "128", "", ""}};
    };
    EXPECT_EQ(rig.code(request("64", was[3])), 3);
    EXPECT_EQ(rig.code(request("4", "770123456")), 3);
    rig.clock.advance(24 * 3600 * 1000);
    EXPECT_EQ(rig.code(request("4", was[3])), 0);
    QList<QByteArray> expected = was;
    expected[2] = "020324";
    expected[9] = "4";
    EXPECT_EQ(rig.send({0xC0, {}}).fields, expected);
    EXPECT_EQ(rig.ask(0xA4, {"7"}), "2");
    EXPECT_EQ(rig.ask(0xA4, {"6"}), "10");
    rig.openShift();
    EXPECT_EQ(rig.code(request("1", was[3])), 1);
    EXPECT_EQ(rig.code(open(2)), 105);
    EXPECT_EQ(rig.code(open(2, 4)), 0);
    rig.run({cancel(), {0x61, {"", ""}}});
    Step step = request("1", was[3]);
    step.fields[10] = "0";
    EXPECT_EQ(rig.code(step), 0);
    EXPECT_EQ(rig.code(check()), 130);
}

TEST(Service, QueriesAnswerWithTheirShape)
{
    emulator::Identity identity;
    identity.model = 5;
    Rig rig(identity);
    rig.openShift();
    rig.clock.advance(1000);
    const QList<std::pair<Step, QList<QByteArray>>> queries{
        {{0xA5, {"0"}}, {"5"}},
        {{0xA5, {"0", "1"}}, {"27"}},
        {{0xA5, {"10"}}, {"0000000001012345"}},
        {{0xA4, {}}, {"3", "0", "0", "1", "0"}},
        {{0xA4, {"2"}}, {"010324", "090000"}},
        {{0xA4, {"5"}}, {"010625"}},
        {{0xA4, {"8"}}, {"0"}},
        {{0xA4, {"11"}}, {"010324", "090000"}},
        {{0xA4, {"15"}}, {"fn_v_1_2  emulated", "1"}},
        {{0xA7, {}}, {"010324", "090001"}},
    };
    for (const auto& [step, fields] : queries)
        EXPECT_EQ(rig.send(step).fields, fields) << step.code << step.fields.value(0).toStdString();
    rig.run({open(2), item("1.000", "1.00")});
    EXPECT_EQ(rig.send({0xA4, {}}).fields, (QList<QByteArray>{"3", "4", "1", "1", "0"}));
    rig.device.setOperatorReachable(true);
    EXPECT_EQ(rig.ask(0xA4, {"8"}), "1");
    EXPECT_EQ(rig.ask(0xA4, {"10"}), "0");
    EXPECT_EQ(rig.send({0xA4, {"11"}}).fields, (QList<QByteArray>{"", ""}));
    EXPECT_EQ(rig.send(check()).fields, QList<QByteArray>{"15"});
    EXPECT_EQ(rig.send(check("0104601234567890215abc")).fields, QList<QByteArray>{"5"});
    // A code of a kind without a proof: the drive cannot check it, the system can.
    EXPECT_EQ(rig.send(check("00000046198488")).fields, QList<QByteArray>{"12"});
}
