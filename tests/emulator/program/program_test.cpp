#include "program/program.h"
#include "xmlrig.h"

#include <gtest/gtest.h>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

/// A request that only a lenient register takes.
QByteArray signedCommand()
{
    return XmlRig().request(44).replace("<Command>44", "<Command>+44");
}

/// Sends it to a program that was just started.
XmlReply ask(Program& program, const QByteArray& request)
{
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", program.ready().section(':', -1).toUShort());
    socket.waitForConnected(patience);
    socket.write(request);
    QByteArray answer;
    while (!answer.endsWith("</ArmResponse>") && socket.waitForReadyRead(patience))
        answer += socket.readAll();
    return {answer};
}

} // namespace

TEST(Program, ServesTcpAndWritesJournalAndTape)
{
    const QTemporaryDir folder;
    QFile journal(folder.filePath("journal"));
    QFile tape(folder.filePath("tape"));
    Program program({"--tcp", "0", "--baud", "115200", "--journal", journal.fileName(), "--tape",
        tape.fileName(), "--drive", "9999000000000042", "--clock", "2026-03-01T09:00:00"});
    openShift(program.ready());
    EXPECT_EQ(program.stop(SIGINT), 0);
    ASSERT_TRUE(journal.open(QIODevice::ReadOnly) && tape.open(QIODevice::ReadOnly));
    const QByteArray entry = journal.readAll();
    for (const char* const part : {"\"type\":\"openShift\"", "9999000000000042", "2026-03-01T09:00:"})
        EXPECT_TRUE(entry.contains(part)) << part << '\n' << entry.constData();
    EXPECT_EQ(program.process.readAllStandardOutput(), tape.readAll());
}

TEST(Program, ServesOfTwoHostsWhomItIsToldTo)
{
    const std::tuple<const char*, bool, bool> rows[]
        = {{"last", false, true}, {"first", true, false}, {"both", true, true}};
    for (const auto& [rule, isFormerServed, isLatterServed] : rows) {
        SCOPED_TRACE(rule);
        // Of the third answer the pieces come with the other host's question between them.
        Program program({"--tcp", "0", "--tcp-connections", rule, "--faults", "split@3"});
        const quint16 port = program.ready().section(':', -1).toUShort();
        TcpHost former(port, 0);
        former.ask();
        EXPECT_EQ(former.answer(), 0);
        TcpHost latter(port, 50);
        latter.ask();
        EXPECT_EQ(latter.answer(), isLatterServed ? 0 : -1);
        former.ask();
        latter.ask();
        EXPECT_EQ(former.answer(), isFormerServed ? 0 : -1);
        EXPECT_EQ(latter.answer(), isLatterServed ? 0 : -1);
    }
}

TEST(Program, EachStartHasAFiscalDriveOfItsOwn)
{
    QStringList drives;
    for (int start = 0; start < 2; ++start) {
        Program program({"--tcp", "0"});
        drives.append(ask(program, XmlRig().request(2)).value("1041"));
        EXPECT_TRUE(QRegularExpression("^9999[0-9]{12}$").match(drives.constLast()).hasMatch());
    }
    EXPECT_NE(drives.at(0), drives.at(1));
}

TEST(Program, GoesOnWithoutPaperThatNobodyReadsAndSaysSo)
{
    Program program({"--tcp", "0", "--journal", "/dev/full"}, "/dev/full");
    const QString ready = program.ready();
    ::kill(static_cast<pid_t>(program.process.processId()), SIGPIPE);
    openShift(ready);
    EXPECT_EQ(program.stop(SIGTERM), 1);
    const QByteArray said = program.process.readAllStandardError();
    EXPECT_EQ(said.count("cannot write the terminal any more: "), 1) << said.toStdString();
    EXPECT_EQ(said.count("cannot write /dev/full any more: "), 1) << said.toStdString();
    EXPECT_EQ(said.count('\n'), 2) << said.toStdString();
}

TEST(Program, HostThatWasKilledKeepsTheLineFromNobody)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath("register");
    Program program({"--pty", link});
    program.ready();
    // Before its first byte, and behind it.
    for (const bool hasAsked : {false, true}) {
        const int host = ::open(QFile::encodeName(link).constData(), O_RDWR | O_NOCTTY);
        ::ioctl(host, TIOCEXCL);
        char enquiry = 0x05;
        ASSERT_TRUE(!hasAsked || (::write(host, &enquiry, 1) == 1 && ::read(host, &enquiry, 1) == 1));
        ::close(host);
        QElapsedTimer waited;
        waited.start();
        int isExclusive = 1;
        while (isExclusive != 0 && waited.elapsed() < patience) {
            const int next = ::open(QFile::encodeName(link).constData(), O_RDWR | O_NOCTTY);
            EXPECT_EQ(::ioctl(next, TIOCGEXCL, &isExclusive), 0);
            ::close(next);
        }
        EXPECT_EQ(isExclusive, 0);
    }
}

TEST(Program, LeavesTheLinkToTheOneThatRuns)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath("register");
    Program first({"--pty", link});
    first.ready();
    const QString line = QFile::symLinkTarget(link);
    Program second({"--pty", link});
    EXPECT_EQ(second.ready(), "spf-emulator: " + link + " is the line of another emulator that is running");
    second.process.waitForFinished(patience);
    EXPECT_EQ(second.process.exitCode(), 1);
    EXPECT_EQ(QFile::symLinkTarget(link), line);
    first.stop(SIGKILL);
    Program third({"--pty", link});
    EXPECT_EQ(third.ready(), "spf-emulator: ready on " + link) << "the link was left behind";
    EXPECT_EQ(third.stop(SIGTERM), 0);
    EXPECT_FALSE(QFileInfo(link).isSymLink());
}

TEST(Program, DriveIsWhatTheOptionsSayAndFaultsOfTheOtherProtocolAreTold)
{
    Program program({"--tcp", "0", "--drive-phase", "closed", "--drive-documents-left", "3", "--faults",
        "answer:2.2005@1"});
    const Reply drive = sendAll(program.ready(), {0xA4});
    EXPECT_EQ(drive.code, 0);
    EXPECT_EQ(drive.fields, (QList<QByteArray>{"7", "0", "0", "0", "4"}));
    program.stop(SIGTERM);
    EXPECT_EQ(program.process.readAllStandardError(),
        "spf-emulator: the fault answer:2.2005 is one of XML and does not happen\n");
}

TEST(Program, TellsAtItsEndWhatTheHostDid)
{
    const QTemporaryDir folder;
    QFile report(folder.filePath("report.json"));
    for (const bool lenient : {false, true}) {
        Program program(QStringList{"--tcp", "0", "--conformance", report.fileName()}
            + (lenient ? QStringList{"--lenient"} : QStringList()));
        EXPECT_EQ(ask(program, signedCommand()).verdict(), lenient ? "0.0" : "5.5002");
        EXPECT_EQ(program.stop(lenient ? SIGINT : SIGTERM), lenient ? 0 : 1);
        const QByteArray said = program.process.readAllStandardError();
        EXPECT_EQ(said.startsWith("refused: Command: no number of a command\nconformance: "), !lenient);
        EXPECT_TRUE(said.contains(lenient ? "conformance: 1 exchanges, 0 refused, 0 warnings\n"
                                          : "conformance: 1 exchanges, 1 refused, 0 warnings\n"))
            << said.toStdString();
        ASSERT_TRUE(report.open(QIODevice::ReadOnly));
        const QJsonObject told = QJsonDocument::fromJson(report.readAll()).object();
        report.close();
        EXPECT_EQ(told.value("exchanges"), 1);
        EXPECT_EQ(told.value("refused"), lenient ? 0 : 1);
        const QJsonObject refusal = told.value("refusals").toArray().at(0).toObject();
        EXPECT_EQ(refusal.value("reason").toString(), lenient ? "" : "Command: no number of a command");
        const QByteArray request = QByteArray::fromHex(refusal.value("request").toString().toLatin1());
        EXPECT_EQ(request, lenient ? QByteArray() : signedCommand());
    }
}

TEST(Program, ExitStatusesAndMessages)
{
    const QTemporaryDir folder;
    QFile(folder.filePath("file")).open(QIODevice::WriteOnly);
    const std::tuple<QStringList, int, const char*> cases[] = {
        {{"--help"}, 0, "--pty"},
        {{"--help"}, 0, "answer-shape:overflow-2"},
        {{"--help"}, 0, "spf-emulator --panel   "},
        {{"--version"}, 0, "spf-emulator "},
        {{}, 2, "give one of --pty and --tcp, or --panel"},
        {{"--panel", "0", "--pty", ""}, 2, "--pty is the name of a link"},
        {{"--tcp", "0", "--pty", "x"}, 2, "give one of --pty and --tcp"},
        {{"--pty", "x", "--tcp-connections", "both"}, 2, "--tcp-connections is last, first or both"},
        {{"--tcp", "0", "--tcp-connections", "all"}, 2, "--tcp-connections is last, first or both"},
        {{"--tcp", "65536"}, 2, "--tcp must be a number from 0 to 65535"},
        {{"--model", "x"}, 2, "--model must be a number from 0 to 9999"},
        {{"--protocol", "hex", "--width", "x"}, 2, "--width must be a number from 44 to 48"},
        {{"--tcp", "0", "--width", "45"}, 2, "--width is 44 or 48"},
        {{"--tcp", "0", "--protocol", "hex"}, 2, "--protocol is HEX, XML or auto"},
        {{"--tcp", "0", "--faults", "fire@1"}, 2, "no such fault: \"fire@1\""},
        {{"--tcp", "0", "--protocol", "HEX", "--faults", "answer:2.2005@1"}, 2,
            "answer:2.2005 is one of XML"},
        {{"--tcp", "0", "--protocol", "XML", "--faults", "answer:8@1+"}, 2, "answer:8 is one of HEX"},
        {{"--tcp", "0", "--drive-phase", "old"}, 2, "--drive-phase is ready"},
        {{"--tcp", "0", "--drive-documents-left", "-1"}, 2, "--drive-documents-left must be a number"},
        {{"--tcp", "0", "--electronic-without-paper", "maybe"}, 2, "--electronic-without-paper is yes or no"},
        {{"--tcp", "0", "--serial", "123456789012345678901"}, 2, "--serial is 1 to 20"},
        {{"--tcp", "0", "--serial", ""}, 2, "--serial is 1 to 20"},
        {{"--tcp", "0", "--serial", "12\x1C"}, 2, "--serial is 1 to 20"},
        {{"--tcp", "0", "--drive", "9999000000000001\n"}, 2, "--drive is 9999 and 12 more digits"},
        {{"--tcp", "0", "--drive", "7380440800000042"}, 2, "--drive is 9999 and 12 more digits"},
        {{"--tcp", "0", "--clock", "9:00"}, 2, "--clock is a time"},
        {{"--tcp", "0", "--restore", "x"}, 2, "--state is the folder of the state"},
        {{"--state", folder.path(), "--snapshot", "a/b"}, 2, "--snapshot is a name of letters"},
        {{"--state", folder.path()}, 2, "give one of --pty and --tcp"},
        {{"--state", folder.filePath("file")}, 2, "give one of --pty and --tcp"},
        {{"--state", folder.filePath("new"), "--restore", "x"}, 1,
            "it has no snapshot \"x\"; it has none at all"},
        {{"--nothing"}, 2, "nothing"},
        {{"--pty", folder.filePath("file")}, 1, "exists and is no link"},
        {{"--pty", folder.filePath("none/link")}, 1, "cannot make the link"},
        {{"--tcp", "0", "--journal", folder.path()}, 1, "cannot write"},
        {{"--tcp", "0", "--conformance", folder.filePath("none/report")}, 1, "cannot write"},
        {{"--tcp", "0", "--conformance", ""}, 2, "--conformance is the name of a file"},
    };
    for (const auto& [arguments, status, message] : cases) {
        Program program(arguments);
        program.process.waitForFinished(patience);
        EXPECT_EQ(program.process.exitCode(), status) << message;
        const QByteArray said
            = status == 0 ? program.process.readAllStandardOutput() : program.process.readAllStandardError();
        EXPECT_TRUE(said.contains(message)) << said.toStdString();
    }
}
