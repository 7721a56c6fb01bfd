#include "line.h"

#include "portholders.h"
#include "portlisting.h"
#include "portlock.h"
#include "serialdevicefactory.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <netinet/in.h>
#include <pty.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

namespace {

class Device : public testing::TestWithParam<std::string>
{
protected:
    Line line{GetParam()};
    devices::StreamDevice& device = line.device();

    bool isPty() const { return GetParam() == "pty"; }
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
    EXPECT_TRUE(device.isOpen());
}

TEST_P(Device, SilenceIsToldOnceAndOnlyOfTheFirstAnswer)
{
    int told = 0;
    const auto ask = [&] {
        device.write("?");
        device.waitForReadyRead(1);
        device.waitForReadyRead(1);
    };
    device.setSilenceCallback([&] { ++told; }, 0);
    // What others have left is no answer, and a wait for it no silence.
    line.send("rest");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    device.read(10);
    device.waitForReadyRead(1);
    EXPECT_EQ(told, 0);
    ask();
    ask();
    EXPECT_EQ(told, 1);
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

TEST_P(Device, SilenceBehindAnAnswerIsNotTold)
{
    device.setSilenceCallback([] { FAIL(); }, 0);
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

TEST_P(Device, ClearDiscardsWhatHasArrived)
{
    line.send("stale");
    ASSERT_TRUE(device.waitForReadyRead(1000));
    EXPECT_TRUE(device.clear());
    EXPECT_FALSE(device.waitForReadyRead(10));
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

TEST_P(Device, LineThatVanishesEndsTheWait)
{
    if (!isPty())
        line.send("last");
    line.hangUp();
    if (!isPty()) {
        ASSERT_TRUE(device.waitForReadyRead(1000)) << "what came before the end is not lost";
        EXPECT_EQ(device.read(10), "last");
    }
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(device.waitForReadyRead(20000));
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(device.read(1), QByteArray());
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.write("x"), -1);
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

TEST(PortInfo, NameToKeepIsTheOneThatOthersCannotTake)
{
    const struct
    {
        const char* serialNumber;
        const char* byId;
        const char* byPath;
        const char* kept;
    } rows[] = {{"A1", "/id", "/path", "/id"}, {"", "/id", "/path", "/path"}, {"", "/id", "", "/id"},
        {"A1", "", "/path", "/path"}, {"", "", "", "/dev/ttyS0"}};
    for (const auto& row : rows) {
        const devices::PortInfo info{
            .path = "/dev/ttyS0", .serialNumber = row.serialNumber, .byId = row.byId, .byPath = row.byPath};
        EXPECT_EQ(info.stableName(), row.kept);
    }
}

// Cheap adapters have all one serial number.
TEST(PortInfo, LinkOfSeveralAdaptersIsNone)
{
    const auto adapter = [](const char* serialNumber, const char* byId) {
        return devices::PortInfo{.serialNumber = serialNumber, .vendorId = "10c4", .byId = byId};
    };
    QStringList links;
    for (const devices::PortInfo& port : devices::withoutSharedLinks({adapter("0001", "/id"),
             adapter("0001", ""), adapter("A1", "/a-if00"), adapter("A1", "/a-if01"), adapter("B2", "/b")}))
        links.append(port.byId);
    EXPECT_EQ(links, (QStringList{"", "", "/a-if00", "/a-if01", "/b"}));
}

/// A pty without anybody behind it.
class Pty : public testing::Test
{
protected:
    Pty()
    {
        char text[64] = {};
        openpty(&farEnd, &nearEnd, text, nullptr, nullptr);
        name = QString::fromLatin1(text);
    }
    ~Pty() override
    {
        close(nearEnd);
        close(farEnd);
    }

    QString name;
    int farEnd = -1;
    int nearEnd = -1;
};

TEST_F(Pty, IsFoundByItsLinks)
{
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir("by-id");
    QFile::link("/dev/frspf-none", folder.filePath("by-id/a-gone"));
    QFile::link(name, folder.filePath("by-id/adapter"));
    const devices::PortInfo info = devices::portInfo(name, folder.path());
    EXPECT_EQ(info.byId, folder.filePath("by-id/adapter"));
    EXPECT_EQ(info.byPath, QString());
}

// Who plays the register works no port of another, and keeps both ends.
TEST_F(Pty, IsHeldByOtherProgramsButNotByTheOneBehindIt)
{
    QProcess holder;
    holder.setStandardInputFile(name);
    const auto holders = [&] {
        holder.start("sleep", {"60"});
        holder.waitForStarted();
        const QList<devices::PortHolder> found = devices::portHolders(name);
        const qint64 process = holder.processId();
        holder.kill();
        holder.waitForFinished();
        return std::pair(found, process);
    };
    EXPECT_TRUE(holders().first.isEmpty());
    fcntl(farEnd, F_SETFD, FD_CLOEXEC);
    const auto [found, process] = holders();
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.constFirst().name, "sleep");
    EXPECT_EQ(found.constFirst().process, process);
}

TEST(PortLock, IsOnWhatTheNameLeadsTo)
{
    const Line pty("pty");
    const QString name = pty.device().getDeviceName();
    const QString path = "/dev/" + name;
    const QTemporaryDir folder;
    const QString link = folder.filePath("register");
    const QString linkToLink = folder.filePath("till");
    ASSERT_TRUE(QFile::link(path, link) && QFile::link(link, linkToLink));
    const std::tuple<QString, QString, bool> rows[] = {{link, path, true}, {link, linkToLink, true},
        {path, name, true}, {"tcp:localhost:7778", "tcp:127.0.0.1:7778", true},
        {"tcp:127.0.0.1:7778", "tcp:[::ffff:127.0.0.1]:7778", true},
        {"tcp:127.0.0.1:7778", "tcp:0.0.0.0:7778", true}, {"tcp:127.0.0.1:7778", "tcp:0:7778", true},
        {"tcp:127.0.0.1:7778", "tcp:[::1]:7778", true}, {"tcp:127.0.0.1:7778", "tcp:192.0.2.1:7778", false},
        {"tcp:127.0.0.1:7778", "tcp:127.0.0.1:7779", false}, {link, "tcp:127.0.0.1:7778", false},
        {"/dev/frspf-none", "/dev/frspf-none", false}};
    for (const auto& [one, other, isSame] : rows) {
        devices::PortLock lock;
        EXPECT_TRUE(lock.take(one)) << one.toStdString();
        devices::PortLock second;
        EXPECT_EQ(second.take(other), !isSame) << one.toStdString() << ' ' << other.toStdString();
        EXPECT_EQ(second.holder(), isSame ? QCoreApplication::applicationPid() : 0);
        EXPECT_TRUE(second.errorString().isEmpty()) << second.errorString().toStdString();
        lock.release();
        EXPECT_TRUE(second.take(other)) << other.toStdString();
    }
}

TEST(PortLock, TellsHowTheHolderBeforeLeftTheLine)
{
    const Line pty("pty");
    const QString path = "/dev/" + pty.device().getDeviceName();
    devices::PortLock lock;
    ASSERT_TRUE(lock.take(path));
    lock.release();
    ASSERT_TRUE(lock.take(path));
    EXPECT_TRUE(lock.wasLeftBusy());
    lock.leaveIdle();
    lock.release();
    ASSERT_TRUE(lock.take(path));
    EXPECT_FALSE(lock.wasLeftBusy());
}

// A host that answers nothing keeps the connection waiting for seconds.
TEST(TcpPort, WaitForTheConnectionCanBeLeft)
{
    // With room for none, the second connection is neither taken nor refused.
    const int server = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(bind(server, reinterpret_cast<sockaddr*>(&address), size), 0);
    ASSERT_EQ(listen(server, 0), 0);
    getsockname(server, reinterpret_cast<sockaddr*>(&address), &size);
    const QString name = QStringLiteral("tcp:127.0.0.1:%1").arg(ntohs(address.sin_port));
    struct Left
    {
    };
    const auto first = devices::createSerialDevice(name);
    ASSERT_TRUE(first->open());
    const auto second = devices::createSerialDevice(name);
    int calls = 0;
    second->setWaitCallback([&calls] {
        if (++calls == 2)
            throw Left();
    });
    EXPECT_THROW(second->open(), Left);
    EXPECT_FALSE(second->isOpen());
    // Nor does it go beyond the time for the port.
    second->setWaitCallback({});
    second->setBudget(20);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(second->open());
    EXPECT_LT(timer.elapsed(), 2000);
    close(server);
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
