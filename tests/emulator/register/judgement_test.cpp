#include "rig.h"

#include <gtest/gtest.h>

namespace {

struct Judgement
{
    const char* what;
    QList<Step> before;
    Step step;
    int code;
};

const QByteArray longLine(300, 'x');

// Each begins with a shift that was just opened.
const QList<Judgement> judgements{
    {"second open", {open(2)}, open(2), 1},
    {"unknown document", {}, open(0), 3},
    {"tax system not registered", {}, open(2, 4), 105},
    {"cash-in does not mind the tax system", {}, open(4, 4), 0},
    {"position without document", {}, item("1.000", "1.00"), 1},
    {"position in a text", {open(1)}, item("1.000", "1.00"), 1},
    {"position after the subtotal", {open(2), item("1.000", "1.00"), subtotal()}, item("1.000", "1.00"), 1},
    {"no quantity", {open(2)}, item("0.000", "1.00"), 3},
    {"four decimals of quantity", {open(2)}, item("1.0001", "1.00"), 3},
    {"negative price", {open(2)}, item("1.000", "-1.00"), 3},
    {"price beyond all receipts", {open(2)}, item("1000000.000", "99999999.00"), 3},
    {"tax rate", {open(2)}, item("1.000", "1.00", "13"), 3},
    {"payment method", {open(2)}, item("1.000", "1.00", "1", "1", "8"), 3},
    {"marked goods without code", {open(2)}, item("1.000", "1.00", "1", "33"), 140},
    {"subtotal of nothing", {open(2)}, subtotal(), 1},
    {"payment before the subtotal", {open(2), item("1.000", "1.00")}, pay(0, "1.00"), 1},
    {"card beyond the total", {open(2), item("1.000", "1.00"), subtotal()}, pay(1, "1.01"), 3},
    {"payment of what is paid", {open(2), item("1.000", "1.00"), subtotal(), pay(0, "1.00")}, pay(1, "1.00"),
        1},
    {"negative payment", {open(2), item("1.000", "1.00"), subtotal()}, pay(0, "-1.00"), 3},
    {"finish short of a kopeck", {open(2), item("1.000", "1.00"), subtotal(), pay(0, "0.99")}, finish(), 1},
    {"finish before the subtotal", {open(2), item("1.000", "1.00")}, finish(), 1},
    {"finish of a gift", {open(2), item("1.000", "0.00"), subtotal()}, finish(), 0},
    {"cancel without document", {}, cancel(), 1},
    {"cash-out of more than there is", {open(5)}, money("0.01"), 14},
    {"cash-out of nothing", {open(5)}, money("0.00"), 3},
    {"second sum", {open(4), money("1.00")}, money("1.00"), 1},
    {"sum in a sale", {open(2)}, money("1.00"), 1},
    {"finish of a cash-in without sum", {open(4)}, finish(), 1},
    {"line of 257 bytes", {open(1)}, {0x21, {longLine.left(257), "0"}}, 3},
    {"line of 256 bytes", {open(1)}, {0x21, {longLine.left(256), "0"}}, 0},
    {"EAN-13 with letters", {open(1)}, {0x24, {"2", "2", "100", "2", "46012345678AB"}}, 3},
    {"unknown agent", {open(2)}, {0x3C, QList<QByteArray>{"128"} + QList<QByteArray>(10)}, 3},
    {"code never checked", {open(2)}, bind(), 142},
    {"code bound to nothing yet", {check(), open(2), bind()}, bind(), 131},
    {"check between bind and position", {check(), open(2), bind()}, check(), 131},
    {"subtotal with a code left over", {check(), open(2), item("1.000", "1.00"), bind()}, subtotal(), 1},
    {"clearing in a receipt", {check(), open(2)}, {0x3F, {}}, 131},
    {"code forgotten", {check(), {0x3F, {}}, open(2)}, bind(), 142},
    {"check of no hexadecimal", {}, {0x3D, {"0", "1", "1", "0", "", "", "0G", "0", "", ""}}, 3},
    {"check of an unknown status", {}, {0x3D, {"0", "6", "1", "0", "", "", "30", "0", "", ""}}, 3},
    {"second shift", {}, {0x6B, {"", ""}}, 1},
    {"Z report in a document", {open(1)}, {0x61, {"", ""}}, 1},
    {"Z report of a closed shift", {{0x61, {"", ""}}}, {0x61, {"", ""}}, 1},
    {"sale without shift", {{0x61, {"", ""}}}, open(2), 1},
    {"text without shift", {{0x61, {"", ""}}}, open(1), 0},
    {"accounting report in a shift", {}, {0x6A, {""}}, 1},
    {"clock in a shift", {}, {0xA3, {"010324", "100000"}}, 1},
    {"clock before the last document", {{0x61, {"", ""}}}, {0xA3, {"010324", "085959"}}, 12},
    {"start with another clock", {}, {0x00, {"010324", "090501"}}, 11},
    {"start five minutes off", {}, {0x00, {"010324", "090500"}}, 0},
    {"document that is not stored", {}, {0x65, {"3"}}, 88},
    {"document of a great number", {}, {0x65, {"4294967295"}}, 88},
    {"document beyond 32 bits", {}, {0x65, {"4294967296"}}, 3},
    {"unknown drive query", {}, {0xA4, {"4"}}, 3},
    {"registration in a shift", {}, {0x08, QList<QByteArray>(18)}, 3},
    {"cashier's INN", {{0x61, {"", ""}}}, {0x6B, {"", "12x"}}, 3},
};

} // namespace

TEST(Judgement, AnswersLikeARegister)
{
    for (const Judgement& judgement : judgements) {
        Rig rig;
        rig.openShift();
        rig.run(judgement.before);
        EXPECT_EQ(rig.code(judgement.step), judgement.code) << judgement.what;
    }
}

TEST(Judgement, AsksForItsStartAfterPowerOn)
{
    Rig rig;
    EXPECT_EQ(rig.send({0xA0, {}}).fields, (QList<QByteArray>{"0", "1", "0"}));
    for (const Step& step : {open(2), finish(), cancel(), check(), Step{0x80, {}}, Step{0xE3, {}}})
        EXPECT_EQ(rig.code(step), 1);
    EXPECT_EQ(rig.code({0xA2, {"6", "0", "1"}}), 1);
    rig.openShift();
    rig.run({open(2), item("1.000", "1.00")});
    rig.device.powerCycle();
    // The document is still there and can be cancelled once the register is started again.
    EXPECT_EQ(rig.send({0xA0, {}}).fields, (QList<QByteArray>{"0", "5", QByteArray::number(3 * 256 + 2)}));
    EXPECT_EQ(rig.code(cancel()), 1);
    rig.start();
    EXPECT_EQ(rig.code(cancel()), 0);
}

TEST(Judgement, ShiftAndDriveAge)
{
    Rig rig;
    rig.openShift();
    rig.run({open(2), item("1.000", "1.00"), subtotal(), pay(0, "1.00")});
    rig.clock.advance(24 * 3600 * 1000);
    EXPECT_EQ(rig.send({0xA0, {}}).fields.at(1), "4");
    rig.clock.advance(1000);
    EXPECT_EQ(rig.send({0xA0, {}}).fields.at(1), "12");
    EXPECT_EQ(rig.code(finish()), 10);
    EXPECT_EQ(rig.code(cancel()), 0);
    EXPECT_EQ(rig.code(open(2)), 10);
    EXPECT_EQ(rig.code(open(4)), 10);
    EXPECT_EQ(rig.code({0x61, {"", ""}}), 0);
    EXPECT_EQ(rig.code({0x6B, {"", ""}}), 0);
    rig.code({0x61, {"", ""}});
    // Thirty days of silence from the OFD are a warning, one more and nothing new begins before it answers.
    constexpr qint64 day = 24 * 3600 * 1000;
    rig.clock.advance(29 * day - 1000);
    EXPECT_EQ(rig.send({0xA4, {}}).fields, (QList<QByteArray>{"3", "0", "0", "0", "8"}));
    EXPECT_EQ(rig.code({0x6B, {"", ""}}), 0);
    rig.clock.advance(day);
    EXPECT_EQ(rig.code(open(2)), 101);
    EXPECT_EQ(rig.code(open(4)), 0);
    rig.run({cancel(), {0x61, {"", ""}}});
    EXPECT_EQ(rig.code({0x6B, {"", ""}}), 101);
    rig.device.setOperatorReachable(true);
    rig.device.setOperatorReachable(false);
    EXPECT_EQ(rig.code({0x6B, {"", ""}}), 0);
    rig.code({0x61, {"", ""}});
    // A drive past its date does nothing more.
    rig.clock.advance(461LL * 24 * 3600 * 1000);
    EXPECT_EQ(rig.send({0xA4, {}}).fields.at(4), "11");
    EXPECT_EQ(rig.code({0x6B, {"", ""}}), 85);
}

TEST(Judgement, PaperRunsOut)
{
    Rig rig;
    rig.openShift();
    rig.device.setPaper(false);
    EXPECT_EQ(rig.code(open(2)), 8);
    EXPECT_EQ(rig.code({0x60, {""}}), 8);
    rig.device.setPaper(true);
    rig.run({open(2), item("1.000", "1.00"), subtotal(), pay(0, "1.00")});
    rig.device.setPaper(false);
    EXPECT_EQ(rig.code(finish()), 8);
    EXPECT_EQ(rig.device.journal().entries().size(), 1) << "nothing is stored of what cannot begin to print";
    rig.device.tape().clear();
    rig.device.setPaper(true);
    rig.device.setPaperLeft(4, false);
    // The receipt is stored, only the printing is left to do: once more finish, but never a cancel.
    EXPECT_EQ(rig.code(finish()), 8);
    EXPECT_EQ(rig.device.tape().lines().size(), 4);
    EXPECT_EQ(rig.device.journal().entries().size(), 2);
    EXPECT_EQ(rig.code(finish()), 8);
    EXPECT_EQ(rig.send({0xA0, {}}).fields.at(2), QByteArray::number(8 * 256 + 2));
    EXPECT_EQ(rig.code(cancel()), 1);
    EXPECT_EQ(rig.send({0xA0, {}}).fields.at(2), QByteArray::number(16 * 256 + 2));
    EXPECT_EQ(rig.code(item("1.000", "1.00")), 1);
    rig.device.setPaper(true);
    EXPECT_EQ(rig.code(finish()), 0);
    EXPECT_EQ(rig.device.journal().entries().size(), 2);
    EXPECT_EQ(rig.device.tape().text().count(QStringLiteral("КАССОВЫЙ ЧЕК")), 1);
}
