#include "rack/rack.h"
#include "rack/workerprocess.h"

#include "e2e/programs.h"
#include "portlock.h"
#include "server/becomes.h"
#include "sqlitestore.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <sys/stat.h>

#include <csignal>
#include <memory>

using namespace frserver;
using sale::DocumentState;

namespace {

/// The service's side of one register, with workers that are processes, over a register of software.
class WorkerTest : public testing::Test
{
protected:
    ~WorkerTest() override
    {
        if (rack)
            stopRack();
    }

    void startRegister(const QStringList& options = {})
    {
        emulator.reset();
        emulator = std::make_unique<Emulator>(options);
        settings.name = "till1";
        settings.port = emulator->port();
        settings.cashier = "Иванова А. П.";
        settings.timeZone = QTimeZone::utc();
        settings.plugins = QStringList{QStringLiteral(SPF_PLUGIN)};
    }

    void startRack()
    {
        isStopped = false;
        const auto createWorker = [this] {
            auto worker = std::make_unique<WorkerProcess>(program);
            QObject::connect(worker.get(), &Worker::told, [this] { ++told; });
            return worker;
        };
        rack = std::make_unique<Rack>(QList{settings}, store, createWorker,
            RegisterAgent::Options{.journal = store.fileName(), .longestUnreached = longestUnreached});
        QObject::connect(rack.get(), &Rack::stopped, [this] { isStopped = true; });
        rack->start();
    }

    /// The port is left.
    void stopRack()
    {
        rack->stop();
        EXPECT_TRUE(becomes([this] { return isStopped; }));
        rack.reset();
    }

    void queue(const QString& id, const QString& kind)
    {
        store.accept(sale::plainRequest(id, kind, {}, "till1"));
        rack->agents().at("till1")->wake();
    }

    void queueSale(const QString& id)
    {
        store.accept({id, "sell", readAll(FRSPF_EXAMPLES "/sale.json"), "till1"});
        rack->agents().at("till1")->wake();
    }

    bool untilWaiting(const QString& reason)
    {
        return becomes([&] { return view().value("waiting").toString() == reason; });
    }

    bool untilEnded(const QString& id)
    {
        return becomes([&] {
            const DocumentState state = document(id).state;
            return state != DocumentState::Queued && state != DocumentState::Running;
        });
    }

    sale::StoredDocument document(const QString& id) const { return store.findId(id).value(); }
    QJsonObject view() const { return rack->agents().at(QStringLiteral("till1"))->view(); }

    /// Children of this process.
    static QList<qint64> workers()
    {
        QList<qint64> ids;
        const QByteArray children = readAll(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
        for (const QByteArray& id : children.split(' ')) {
            if (readAll(QStringLiteral("/proc/%1/cmdline").arg(id.toLongLong())).contains("--worker"))
                ids.append(id.toLongLong());
        }
        return ids;
    }

    QTemporaryDir folder;
    sale::SqliteStore store{folder.filePath(QStringLiteral("journal.sqlite"))};
    std::unique_ptr<Emulator> emulator;
    RegisterSettings settings;
    std::unique_ptr<Rack> rack;
    QString program = QStringLiteral(FRSERVER);
    qint64 longestUnreached = RegisterAgent::Options().longestUnreached;
    bool isStopped = false;
    /// Ticks of the line, and answers.
    int told = 0;
};

class Protocols : public WorkerTest, public testing::WithParamInterface<receipt::Protocol>
{
protected:
    Protocols()
    {
        settings.protocol = GetParam();
        settings.allowsTestDrive = true;
    }
};

TEST_P(Protocols, AreSettledWhenAWorkerIsKilledInTheMiddle)
{
    // The pace of a line, so that there is a middle. Over XML the whole sale is one request, and what is left
    // of an answer that is as slow would be waited for as long as the protocol allows.
    const bool isHex = GetParam() == receipt::Protocol::Hex;
    startRegister(isHex ? QStringList{"--baud", "19200"} : QStringList());
    startRack();
    queue("shift:001", "openShift");
    ASSERT_TRUE(untilEnded("shift:001"));
    // At the first byte of it, and later and later.
    for (const int ticks : isHex ? QList{0, 2, 4} : QList{0}) {
        const QString id = QStringLiteral("sale:000%1").arg(ticks);
        const qsizetype before = emulator->sales().size();
        queueSale(id);
        ASSERT_TRUE(becomes([&] { return document(id).state == DocumentState::Running; }));
        const int begun = told;
        ASSERT_TRUE(
            becomes([&] { return told >= begun + ticks || document(id).state != DocumentState::Running; }));
        const QList<qint64> killed = workers();
        ASSERT_EQ(killed.size(), 1);
        kill(static_cast<pid_t>(killed.constFirst()), SIGKILL);
        ASSERT_TRUE(untilEnded(id));
        const DocumentState truth
            = emulator->sales().size() > before ? DocumentState::Issued : DocumentState::NotIssued;
        EXPECT_EQ(document(id).state, truth) << ticks;
        // The client's rule: the same id again.
        queueSale(id);
        ASSERT_TRUE(untilEnded(id));
        EXPECT_EQ(document(id).state, DocumentState::Issued) << ticks;
        EXPECT_EQ(emulator->sales().size(), before + 1) << ticks;
    }
}

INSTANTIATE_TEST_SUITE_P(Both, Protocols, testing::Values(receipt::Protocol::Hex, receipt::Protocol::Xml),
    [](const auto& row) { return receipt::protocolName(row.param).toStdString(); });

TEST_F(WorkerTest, SellsNothingOnAnotherRegisterOrDrive)
{
    settings.protocol = receipt::Protocol::Hex;
    startRegister({"--drive", "9999000000000001", "--serial", "00000000000000000007"});
    startRack();
    queueSale("sale:0001");
    ASSERT_TRUE(untilWaiting("testDrive"));
    stopRack();
    settings.allowsTestDrive = true;
    settings.expected.serial = "00000000000000000008";
    startRack();
    ASSERT_TRUE(untilWaiting("wrongRegister"));
    stopRack();
    settings.expected.serial = "00000000000000000007";
    startRack();
    ASSERT_TRUE(untilEnded("sale:0001"));
    stopRack();
    devices::PortLock lock;
    EXPECT_TRUE(lock.take(settings.port) && !lock.wasLeftBusy()) << "whoever comes next need not read it dry";
    lock.release();

    startRegister({"--drive", "9999000000000002", "--serial", "00000000000000000007"});
    startRack();
    queueSale("sale:0002");
    ASSERT_TRUE(untilWaiting("newDrive"));
    EXPECT_EQ(document("sale:0002").state, DocumentState::Queued);
    rack->agents().at("till1")->accept("Петров", "the drive was full");
    ASSERT_TRUE(untilEnded("sale:0002"));
    EXPECT_EQ(document("sale:0002").state, DocumentState::Issued);
    EXPECT_EQ(document("sale:0002").drive, "9999000000000002");
}

TEST_F(WorkerTest, WhatARegisterWasAtThatIsGoneIsAPersonsCaseUntilItIsBack)
{
    settings.protocol = receipt::Protocol::Hex;
    settings.allowsTestDrive = true;
    longestUnreached = 0;
    // The pace of a line, so that there is a middle.
    startRegister({"--baud", "19200"});
    const QString port = std::exchange(settings.port, folder.filePath("line"));
    ASSERT_TRUE(QFile::link(port, settings.port));
    startRack();
    queue("shift:001", "openShift");
    ASSERT_TRUE(untilEnded("shift:001"));
    queueSale("sale:0001");
    ASSERT_TRUE(becomes([&] { return document("sale:0001").state == DocumentState::Running; }));
    ASSERT_TRUE(QFile::remove(settings.port));
    const QList<qint64> killed = workers();
    ASSERT_EQ(killed.size(), 1);
    kill(static_cast<pid_t>(killed.constFirst()), SIGKILL);
    ASSERT_TRUE(untilEnded("sale:0001"));
    EXPECT_EQ(document("sale:0001").state, DocumentState::Unknown);
    ASSERT_TRUE(untilWaiting("line"));
    // Nobody asks for it again.
    ASSERT_TRUE(QFile::link(port, settings.port));
    ASSERT_TRUE(becomes([&] { return sale::isFinal(document("sale:0001").state); }));
    const bool isSold = !emulator->sales().isEmpty();
    EXPECT_EQ(document("sale:0001").state, isSold ? DocumentState::Issued : DocumentState::NotIssued);
}

TEST_F(WorkerTest, TellsThatThereIsNoWorker)
{
    program = folder.filePath("nowhere");
    startRegister();
    startRack();
    ASSERT_TRUE(untilWaiting("worker"));
    EXPECT_NE(view().value("waitingText").toString(), "");
}

/// Nobody closes its input, and what it waits for takes longer than this test may.
TEST_F(WorkerTest, EndsWithAParentThatIsKilled)
{
    startRegister({"--faults", "silence@1+"});
    const QByteArray input = folder.filePath("input").toLocal8Bit();
    ASSERT_EQ(mkfifo(input.constData(), 0600), 0);
    QFile held(folder.filePath("input"));
    ASSERT_TRUE(held.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QProcess parent;
    parent.start(
        "/bin/sh", {"-c", QStringLiteral("'%1' --worker <'%2' & echo $!; wait").arg(program, input)});
    ASSERT_TRUE(parent.waitForReadyRead());
    const QString id = QString::fromLatin1(parent.readLine().trimmed());
    const QJsonObject start{
        {"n", 1}, {"do", "start"}, {"register", settings.toJson()}, {"journal", store.fileName()}};
    held.write(QJsonDocument(start).toJson(QJsonDocument::Compact)
        + "\n"
          R"({"n":2,"do":"open"})"
          "\n");
    QByteArray said;
    while (!said.contains("written") && parent.waitForReadyRead())
        said += parent.readAll();
    ASSERT_TRUE(said.contains("written")) << said.toStdString();
    // What it is at, before it does anything of it.
    EXPECT_LT(said.indexOf(R"({"at":2})"), said.indexOf("written"));
    EXPECT_TRUE(said.contains(R"({"at":2})"));
    parent.kill();
    EXPECT_TRUE(parent.waitForFinished());
    EXPECT_TRUE(becomes([&id] {
        const QByteArray state = readAll(QStringLiteral("/proc/%1/stat").arg(id));
        return state.isEmpty() || state.contains(") Z ");
    }));
    devices::PortLock lock;
    EXPECT_TRUE(lock.take(settings.port));
}

} // namespace
