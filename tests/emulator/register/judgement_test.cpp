#include "rig.h"

#include <gtest/gtest.h>

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
