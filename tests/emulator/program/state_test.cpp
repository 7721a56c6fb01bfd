// The state of a register that is a process, and who may look into it.

#include "memory/database.h"
#include "memory/memory.h"
#include "memory/statefolder.h"
#include "program/program.h"

#include <gtest/gtest.h>
#include <QFileInfo>
#include <QSqlQuery>
#include <QTemporaryDir>

TEST(Program, ShowsTheDocumentsOfAStateThatIsInUse)
{
    const QTemporaryDir folder;
    const QString state = folder.filePath("state");
    Program program({"--tcp", "0", "--clock", "2026-03-01T09:00:00", "--state", state});
    openShift(program.ready());
    // Status, and what is said in this order.
    const std::tuple<QStringList, int, QStringList> rows[] = {
        {{"--state", state}, 0, {"2026-03-01 09:00:", "ОТЧЕТ О РЕГИСТРАЦИИ", "ОТЧЕТ ОБ ОТКРЫТИИ СМЕНЫ"}},
        {{"--state", state, "2"}, 0,
            {"1012 дата, время: 2026-03-01T09:00:", "1038 номер смены: 1\n", "ЭМУЛЯТОР, НЕ ЧЕК"}},
        {{"--state", state, "--json"}, 0, {"[", "\"number\": 1", "\"number\": 2"}},
        {{"--json", "2", "--state", state}, 0,
            {"{", "\"name\": \"наименование документа\"", "\"tag\": 1000"}},
        {{"--state", state, "3"}, 1, {"there is no document 3; the last one is 2"}},
        {{"--state", folder.filePath("other")}, 1, {"/other cannot be read: "}},
        {{"--state", state, "x"}, 2, {"\"x\" is no number"}},
        {{"--state", state, "1", "2"}, 2, {"\"2\" is no number"}},
        {{"2"}, 2, {"--state"}},
        {{"--state", state, "--tape", "x"}, 2, {"tape"}},
        {{"--help"}, 0, {"documents", "--state", "--json"}},
    };
    for (const auto& [arguments, status, parts] : rows) {
        Program documents(QStringList{"documents"} + arguments);
        documents.process.waitForFinished(patience);
        EXPECT_EQ(documents.process.exitCode(), status) << arguments.join(' ').toStdString();
        const QByteArray output = documents.process.readAllStandardOutput();
        const QByteArray errors = documents.process.readAllStandardError();
        EXPECT_EQ(status == 0 ? errors : output, "");
        const QString said = QString::fromUtf8(output + errors);
        EXPECT_EQ(missingFrom(said, parts), "") << said.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(folder.filePath("other")));
    // A list that nobody can read is none that was shown.
    QProcess closed;
    closed.start("bash", {"-c", "exec \"$0\" documents --state \"$1\" >&-", FRSPF_EMULATOR, state});
    ASSERT_TRUE(closed.waitForFinished(patience));
    EXPECT_EQ(closed.exitCode(), 1);
    EXPECT_TRUE(closed.readAllStandardError().contains("cannot be written"));
}

TEST(Program, StateOutlivesItsProcessAndBelongsToOneDrive)
{
    const QTemporaryDir folder;
    const QStringList state{"--tcp", "0", "--state", folder.path()};
    Program first(state + QStringList{"--drive", "9999000000000042", "--serial", "A1"});
    openShift(first.ready());
    Program second(state);
    EXPECT_EQ(second.ready(),
        QString("spf-emulator: the state %1 cannot be used: in use by process %2")
            .arg(folder.path())
            .arg(first.process.processId()));
    first.stop(SIGKILL);
    Program other(state + QStringList{"--drive", "9999000000000043"});
    EXPECT_TRUE(other.ready().contains("its --drive is 9999000000000042, not 9999000000000043"));
    Program younger(state + QStringList{"--drive-phase", "ready"});
    EXPECT_TRUE(younger.ready().contains("--drive-phase is for a new state"));
    Program again(state + QStringList{"--clock", "2036-03-01T09:00:00"});
    const QString ready = again.ready();
    EXPECT_EQ(sendAll(ready, {0xA0}).fields, QList<QByteArray>({"0", "13", "0"}))
        << "not started, the shift open for ten years";
    EXPECT_EQ(sendAll(ready, {0xA6}).fields.value(0).trimmed(), "A1");
    EXPECT_EQ(sendAll(ready, {0xA7}).fields.value(0), "010336");
}

TEST(Program, AnswersNothingThatItCannotKeep)
{
    const QTemporaryDir folder;
    const QStringList state{"--tcp", "0", "--state", folder.path(), "--tape", folder.filePath("tape")};
    {
        Program program(state);
        const QString ready = program.ready();
        const emulator::Database intruder(
            emulator::StateFolder::stateFileOf(folder.path()), emulator::Database::Access::ReadWrite);
        intruder.execute("BEGIN IMMEDIATE");
        EXPECT_EQ(sendAll(ready, {0xA7, 0x00, 0xA0}).code, 0) << "nothing to keep";
        EXPECT_EQ(sendAll(ready, {0xA7, 0x00, 0x6B}).code, -1);
        program.process.waitForFinished(patience);
        EXPECT_EQ(program.process.exitCode(), 1);
        EXPECT_TRUE(program.process.readAllStandardError().contains("the state cannot be kept"));
    }
    EXPECT_EQ(QFileInfo(folder.filePath("tape")).size(), 0);
    Program program(state);
    EXPECT_EQ(sendAll(program.ready(), {0xA0}).fields, QList<QByteArray>({"0", "1", "0"}));
}

TEST(Program, KeepsAllDocumentsOfAHostThatWaitsForNoAnswer)
{
    const QTemporaryDir folder;
    constexpr int many = 1000;
    Program program({"--tcp", "0", "--state", folder.path(), "--quiet"});
    const QString ready = program.ready();
    sendAll(ready, {0xA7, 0x00});
    Rig host;
    QByteArray reports;
    for (int number = 0; number < many; ++number)
        reports += host.frame({0x6A, {""}});
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", ready.section(':', -1).toUShort());
    socket.waitForConnected(patience);
    socket.write(reports);
    QByteArray answers;
    while (answers.count('\x02') < many && socket.waitForReadyRead(patience))
        answers += socket.readAll();
    EXPECT_EQ(emulator::Memory::documentsOf(folder.path()).size(), 1 + many);
}
