// What is known of ports without working them: their names, who has them, and whose turn it is.

#include "line.h"

#include "portholders.h"
#include "portlisting.h"
#include "portlock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

#include <tuple>
#include <utility>

namespace {

TEST(PortInfo, NameToKeepIsTheOneThatOthersCannotTake)
{
    const std::tuple<const char*, const char*, const char*, const char*> rows[]
        = {{"A1", "/id", "/path", "/id"}, {"", "/id", "/path", "/path"}, {"", "/id", "", "/id"},
            {"A1", "", "/path", "/path"}, {"", "", "", "/dev/ttyS0"}};
    for (const auto& [serialNumber, byId, byPath, kept] : rows) {
        const devices::PortInfo info{
            .path = "/dev/ttyS0", .serialNumber = serialNumber, .byId = byId, .byPath = byPath};
        EXPECT_EQ(info.stableName(), kept);
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

} // namespace
