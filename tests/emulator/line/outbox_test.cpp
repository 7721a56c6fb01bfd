#include "line/outbox.h"

#include "register/virtualclock.h"

#include <gtest/gtest.h>

TEST(Outbox, KeepsThePaceOfTheLine)
{
    emulator::VirtualClock clock;
    emulator::Outbox outbox(clock, 9600);
    outbox.put(QByteArray(96, 'x'));
    EXPECT_EQ(outbox.take(), "");
    clock.advance(50);
    EXPECT_EQ(outbox.take().size(), 48);
    clock.advance(1000);
    EXPECT_EQ(outbox.take().size(), 48);
    EXPECT_EQ(outbox.nextDue(), std::nullopt);
    // What was idle time is not caught up with.
    outbox.put(QByteArray(96, 'y'));
    EXPECT_EQ(outbox.take(), "");
    EXPECT_EQ(*outbox.nextDue() - clock.milliseconds(), 2);
}
