#include "line.h"

#include "portname.h"
#include "serialdevicefactory.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <thread>

namespace {

class Device : public testing::TestWithParam<std::string>
{
protected:
    Line line{GetParam()};
    devices::StreamDevice& device = line.device();
};

TEST_P(Device, WaitAnswersAtOnceWhileBytesAreLeft)
{
    line.send("abcde");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    EXPECT_EQ(device.read(2), "ab");
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(device.waitForReadyRead(5000));
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(device.read(100), "cde");
    EXPECT_FALSE(device.waitForReadyRead(10));
    line.send("stale");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    EXPECT_TRUE(device.clear());
    EXPECT_FALSE(device.waitForReadyRead(10)) << "what had arrived is discarded";
    EXPECT_TRUE(device.isOpen());
}

TEST_P(Device, SilenceIsToldOnceBeforeTheFirstAnswerAndOnceBehindIt)
{
    int told = 0;
    int toldLater = 0;
    const auto ask = [&] {
        device.write("?");
        device.waitForReadyRead(1);
        device.waitForReadyRead(1);
    };
    device.setSilenceCallback([&](bool hasAnswered) { ++(hasAnswered ? toldLater : told); }, 0, 0);
    // What others have left is no answer, and a wait for it no silence.
    line.send("rest");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    device.read(10);
    device.waitForReadyRead(1);
    EXPECT_EQ(told, 0);
    ask();
    EXPECT_EQ(device.repeats(), 0U);
    ask();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(device.repeats(), 1U);
    line.send("answer");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    device.read(10);
    EXPECT_EQ(toldLater, 0);
    ask();
    ask();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(toldLater, 1);
}

// Also of a line on which something chatters without an end.
TEST_P(Device, SpentBudgetClosesTheLineForGood)
{
    device.setBudget(20);
    EXPECT_FALSE(device.waitForReadyRead(60000));
    EXPECT_TRUE(device.isBudgetSpent());
    EXPECT_FALSE(device.isOpen() || device.open());
    EXPECT_EQ(device.write("?"), -1);

    Line other{GetParam()};
    other.send("chatter");
    ASSERT_TRUE(other.device().waitForReadyRead(1000));
    other.device().setBudget(0);
    EXPECT_FALSE(other.device().waitForReadyRead(1000));
    EXPECT_FALSE(other.device().isOpen());
}

TEST_P(Device, BusyRegisterIsNotSilentAtOnce)
{
    device.setSilenceCallback([](bool) { FAIL(); }, 0);
    device.write("?");
    line.send("answer");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    device.read(10);
    device.write("?");
    EXPECT_FALSE(device.waitForReadyRead(1));
}

TEST_P(Device, ReadSeesWhatTheSystemHoldsWithoutAWait)
{
    EXPECT_EQ(device.read(10), QByteArray());
    line.send("abc");
    QByteArray data;
    QElapsedTimer timer;
    for (timer.start(); data.size() < 3 && timer.elapsed() < 1000;)
        data += device.read(10);
    EXPECT_EQ(data, "abc");
}

TEST_P(Device, WriteHasLeftWhenItReturns)
{
    EXPECT_EQ(device.write("frame"), 5);
    EXPECT_EQ(line.received(), "frame");

    const QByteArray large(1 << 20, 'x');
    QByteArray got;
    std::thread reader([&] {
        for (QByteArray part = " "; !part.isEmpty() && got.size() < large.size();)
            got += part = line.received();
    });
    EXPECT_EQ(device.write(large), large.size());
    reader.join();
    EXPECT_EQ(got.size(), large.size());
}

TEST_P(Device, EventLoopOfTheHostTakesNoBytes)
{
    line.send("abc");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    EXPECT_EQ(device.read(1), "a");
    line.send("def");
    QCoreApplication::processEvents();
    line.send("ghi");
    QByteArray data;
    while (data.size() < 8 && device.waitForReadyRead(1000))
        data += device.read(100);
    EXPECT_EQ(data, "bcdefghi");
}

TEST_P(Device, TakesTheSettingsOfAnyDriver)
{
    EXPECT_TRUE(device.setFlowControl(QSerialPort::SoftwareControl));
    EXPECT_EQ(device.getFlowControl(), QSerialPort::SoftwareControl);
    for (const bool ready : {false, true}) {
        EXPECT_TRUE(device.setDataTerminalReady(ready));
        EXPECT_EQ(device.isDataTerminalReady(), ready);
    }
    EXPECT_TRUE(device.setBaudRate(QSerialPort::Baud57600));
    EXPECT_EQ(device.getBaudRate(), QSerialPort::Baud57600);
    EXPECT_TRUE(device.setParity(QSerialPort::NoParity) && device.setDataBits(QSerialPort::Data8)
        && device.setStopBits(QSerialPort::OneStop));
    line.send("x");
    EXPECT_TRUE(device.waitForReadyRead(1000)) << "a refused setting must not spoil the line";
}

TEST_P(Device, OpensAndClosesAnyNumberOfTimes)
{
    EXPECT_TRUE(device.open());
    device.close();
    device.close();
    EXPECT_FALSE(device.isOpen());
    EXPECT_FALSE(device.waitForReadyRead(5000));
    EXPECT_EQ(device.write("x"), -1);
    EXPECT_EQ(device.read(1), QByteArray());
    EXPECT_FALSE(device.clear());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Device, testing::Values("pty", "tcp"), [](const auto& test) { return test.param; });

TEST(SerialPort, HeldLineTakesTheFrameWhenItIsReleased)
{
    Line line("pty");
    devices::StreamDevice& device = line.device();
    ASSERT_TRUE(device.setFlowControl(QSerialPort::SoftwareControl));
    // Any byte but XOFF would release the line again.
    line.send("x\x13");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    std::thread writer([&] { EXPECT_EQ(device.write("frame"), 5); });
    EXPECT_EQ(line.received(50), QByteArray());
    line.send("\x11");
    EXPECT_EQ(line.received(), "frame");
    writer.join();
    EXPECT_EQ(device.read(10), "x") << "XOFF is no data";
}

TEST(TcpPort, WhatCameBeforeTheLineVanishedIsNotLost)
{
    Line line("tcp");
    devices::StreamDevice& device = line.device();
    line.send("last");
    line.hangUp();
    ASSERT_TRUE(device.waitForReadyRead(1000));
    EXPECT_EQ(device.read(10), "last");
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(device.waitForReadyRead(20000));
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(device.read(1), QByteArray());
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.write("x"), -1);
}

TEST(SerialPort, AnyCallNoticesThatTheLineHasVanished)
{
    using Call = bool (*)(devices::StreamDevice&);
    const std::pair<const char*, Call> rows[]
        = {{"write", [](auto& device) { return device.write("x") == 1; }},
            {"read", [](auto& device) { return !device.read(1).isEmpty(); }},
            {"wait", [](auto& device) { return device.waitForReadyRead(20000); }},
            {"speed", [](auto& device) { return device.setBaudRate(QSerialPort::Baud57600); }},
            {"flow", [](auto& device) { return device.setFlowControl(QSerialPort::SoftwareControl); }},
            {"open", [](auto& device) { return device.open(); }}};
    for (const auto& [name, succeeds] : rows) {
        Line line("pty");
        line.hangUp();
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(succeeds(line.device())) << name;
        EXPECT_LT(timer.elapsed(), 1000) << name;
        EXPECT_FALSE(line.device().isOpen()) << name;
        EXPECT_FALSE(line.device().errorString().isEmpty()) << name;
    }
}

TEST(Factory, TellsPortsByTheirNames)
{
    const std::pair<const char*, int> rows[]
        = {{"/dev/ttyS7", 1}, {"/dev/ttyACM0", 2}, {"tcp:register:7778", 3}, {"tcp:[::1]:1", 3}, {" ", 0},
            {"tcp:register", 0}, {"tcp:register:0", 0}, {"tcp:register:65536", 0}, {"tcp::7778", 0}};
    for (const auto& [name, type] : rows) {
        const auto device = devices::createSerialDevice(QString::fromLatin1(name));
        EXPECT_EQ(device ? device->getType() : 0, type) << name;
    }
}

TEST(Factory, TellsWhatOtherMachinesCallTheSame)
{
    const std::pair<const char*, const char*> rows[] = {{"tcp:Till1.shop:5555", "till1.shop:5555"},
        {"tcp:192.0.2.21:05555", "192.0.2.21:5555"}, {"tcp:[2001:DB8::1]:1", "2001:db8::1:1"},
        {"tcp:[2001:db8:0:0::0001]:1", "2001:db8::1:1"}, {"tcp:[::ffff:192.0.2.21]:1", "192.0.2.21:1"},
        {"tcp:localhost:1", ""}, {"tcp:127.8.0.1:1", ""}, {"tcp:[::1]:1", ""},
        {"tcp:[::ffff:127.0.0.1]:1", ""}, {"tcp:0.0.0.0:1", ""}, {"/dev/ttyS7", ""}, {"tcp:register", ""}};
    for (const auto& [name, address] : rows)
        EXPECT_EQ(devices::networkAddress(QString::fromLatin1(name)), address) << name;
}

TEST(Factory, PortThatIsNotThereDoesNotOpen)
{
    for (const char* name : {"/dev/frspf-none", "tcp:127.0.0.1:1"}) {
        const auto device = devices::createSerialDevice(QString::fromLatin1(name));
        EXPECT_FALSE(device->open()) << name;
        EXPECT_FALSE(device->errorString().isEmpty()) << name;
    }
    EXPECT_FALSE(devices::createSerialDevice(QStringLiteral("/dev/frspf-none"))->isAvailable());
}

} // namespace
