// How frctl finds a port, waits for it, and what it says of who is behind it.

#include "portlock.h"
#include "programs.h"

#include <QCoreApplication>
#include <QFile>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

TEST(Port, BusyOneNamesItsHolderAndIsWaitedFor)
{
    const Emulator emulator;
    devices::PortLock lock;
    ASSERT_TRUE(lock.take(emulator.port()));
    const QTemporaryDir folder;
    const QString otherName = folder.filePath("till");
    ASSERT_TRUE(QFile::link(emulator.port(), otherName));
    const QStringList command{"--port", otherName, "--protocol", "HEX", "status"};
    const Result busy = runFrctl(command);
    EXPECT_EQ(busy.status, 1);
    const QByteArray process = QByteArray::number(QCoreApplication::applicationPid());
    const Result replay = runFrctl(
        {"trace", "replay", FRSPF_SOURCES "/tests/traces/hex-trouble.trace", "--as", "host", otherName});
    for (const Result& result : {busy, replay})
        EXPECT_TRUE(result.errors.contains("is busy: process " + process + " works it"))
            << result.errors.constData();
    std::thread holder([&lock] { lock.release(); });
    EXPECT_EQ(runFrctl(QStringList{"--wait", "60"} + command).status, 0);
    holder.join();
}

TEST(Port, WithoutFolderIsTheOneInDevUnlessItIsHere)
{
    const Emulator emulator;
    const Result here = runShell("cd " + emulator.port().chopped(9)
        + " && " FRCTL " --plugin " SPF_PLUGIN " --protocol HEX --port register status && " FRCTL
          " --plugin " SPF_PLUGIN " --protocol HEX detect register");
    EXPECT_EQ(here.status, 0) << here.errors.constData();
    const Result result = runFrctl({"--port", "no-such-till", "status"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains("port /dev/no-such-till cannot be opened"))
        << result.errors.constData();
}

TEST(Port, AnswerOfTheOtherProtocolAndSilenceInTheMidstAreToldOf)
{
    const Emulator emulator({"--protocol", "HEX"});
    const Result foreign = runFrctl({"--protocol", "XML", "--port", emulator.port(), "status"});
    EXPECT_EQ(foreign.status, 1);
    EXPECT_TRUE(foreign.errors.contains("--protocol HEX")) << foreign.errors.constData();

    const Emulator falling({"--faults", "silence@4+"});
    const Result silent = interruptFrctl(
        {"--protocol", "HEX", "--port", falling.port(), "status"}, "has fallen silent", SIGINT);
    EXPECT_EQ(silent.status, 130) << silent.errors.constData();
}

namespace {

/// A register that only says that it works on something, until it is switched off.
void work(quint16& port, QSemaphore& isReady)
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    port = server.serverPort();
    isReady.release();
    server.waitForNewConnection(30000);
    QTcpSocket* const host = server.nextPendingConnection();
    if (host == nullptr || !host->waitForReadyRead(30000))
        return;
    host->write("\x06");
    host->waitForBytesWritten(30000);
    host->disconnectFromHost();
    if (host->state() != QAbstractSocket::UnconnectedState)
        host->waitForDisconnected(30000);
}

} // namespace

TEST(Port, RegisterAtWorkIsNotAskedOverTheOtherProtocol)
{
    for (const char* const command : {"doctor", "detect"}) {
        quint16 port = 0;
        QSemaphore isReady;
        std::thread device([&] { work(port, isReady); });
        isReady.acquire();
        const QTemporaryDir folder;
        const QString trace = folder.filePath("trace");
        const Result result = runFrctl(QStringList{"--port", "tcp:127.0.0.1:" + QString::number(port),
            "--protocol", "HEX", "--trace", trace, command});
        device.join();
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.output.contains("at work there; ask again later")) << result.output.constData();
        const QByteArray lines = readAll(trace);
        EXPECT_EQ(lines.count("# frtrace 1 masked\n"), 1) << lines.constData();
        EXPECT_TRUE(lines.contains(" HEX\n")) << lines.constData();
        EXPECT_TRUE(lines.contains(" < 06")) << lines.constData();
        EXPECT_FALSE(lines.contains("XML")) << lines.constData();
    }
}

TEST(Port, InterruptedDetectTellsWhatItHasFound)
{
    const Emulator emulator;
    const Emulator silent({"--faults", "silence@1+"});
    const QStringList command{"--protocol", "HEX", "--log-level", "info", "detect", emulator.port(),
        emulator.port(), silent.port()};
    const Result result = interruptFrctl(command, silent.port().toUtf8() + " has no modem lines", SIGINT);
    EXPECT_EQ(result.status, 130) << result.errors.constData();
    EXPECT_EQ(result.output.count("serial number"), 1) << result.output.constData();
}
