#include "rig.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int patience = 10'000;

class Program
{
public:
    explicit Program(const QStringList& arguments)
    {
        process.start(QStringLiteral(FRSPF_EMULATOR), arguments);
        process.waitForStarted(patience);
    }
    ~Program()
    {
        process.kill();
        process.waitForFinished(patience);
    }
    QString ready()
    {
        process.setReadChannel(QProcess::StandardError);
        while (!process.canReadLine() && process.waitForReadyRead(patience)) { }
        return QString::fromUtf8(process.readLine()).trimmed();
    }
    int stop(int signal)
    {
        ::kill(static_cast<pid_t>(process.processId()), signal);
        process.waitForFinished(patience);
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QProcess process;
};

QByteArray overTerminal(const QString& path, const QByteArray& request)
{
    const int terminal = ::open(qPrintable(path), O_RDWR | O_NOCTTY);
    QByteArray answer;
    if (::write(terminal, request.constData(), static_cast<size_t>(request.size())) != request.size())
        return answer;
    pollfd ready{terminal, POLLIN, 0};
    while (answer.size() < 9 || answer.at(answer.size() - 3) != 3) {
        char buffer[256];
        if (::poll(&ready, 1, patience) <= 0)
            break;
        const ssize_t count = ::read(terminal, buffer, sizeof buffer);
        if (count <= 0)
            break;
        answer.append(buffer, count);
    }
    ::close(terminal);
    return answer;
}

} // namespace

TEST(Program, ServesAPseudoTerminalAndCleansUp)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath("register");
    const QString journal = folder.filePath("journal");
    const QString tape = folder.filePath("tape");
    Program program({"--pty", link, "--journal", journal, "--tape", tape, "--width", "48"});
    EXPECT_EQ(program.ready(), "spf-emulator: ready on " + link);
    // Each request opens and closes the terminal, as hosts do that come and go.
    Rig host;
    const Reply time = host.parse(overTerminal(link, host.frame({0xA7, {}})));
    EXPECT_EQ(time.code, 0);
    EXPECT_EQ(host.parse(overTerminal(link, host.frame({0x00, time.fields}))).code, 0);
    EXPECT_EQ(host.parse(overTerminal(link, host.frame({0x6B, {"Иванова", ""}}))).code, 0);
    EXPECT_EQ(program.stop(SIGTERM), 0);
    EXPECT_FALSE(QFileInfo(link).isSymLink());
    QFile lines(journal);
    ASSERT_TRUE(lines.open(QIODevice::ReadOnly));
    EXPECT_TRUE(lines.readAll().contains("\"type\":\"openShift\""));
    QFile paper(tape);
    ASSERT_TRUE(paper.open(QIODevice::ReadOnly));
    EXPECT_EQ(program.process.readAllStandardOutput(), paper.readAll());
}

TEST(Program, ServesTcp)
{
    Program program({"--tcp", "0", "--quiet", "--baud", "115200"});
    const QString ready = program.ready();
    ASSERT_TRUE(ready.startsWith("spf-emulator: ready on tcp:127.0.0.1:")) << ready.toStdString();
    Rig host;
    for (int connection = 0; connection < 2; ++connection) {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", ready.section(':', -1).toUShort());
        ASSERT_TRUE(socket.waitForConnected(patience));
        socket.write(host.frame({0xA6, {}}));
        QByteArray answer;
        while (host.parse(answer).code != 0 && socket.waitForReadyRead(patience))
            answer += socket.readAll();
        EXPECT_EQ(host.parse(answer).code, 0);
    }
    EXPECT_EQ(program.stop(SIGINT), 0);
}

TEST(Program, ExitStatusesAndMessages)
{
    const QTemporaryDir folder;
    QFile(folder.filePath("file")).open(QIODevice::WriteOnly);
    struct Case
    {
        QStringList arguments;
        int status;
        const char* message;
    };
    const QList<Case> cases{
        {{"--help"}, 0, "--pty"},
        {{"--version"}, 0, "spf-emulator "},
        {{}, 2, "give one of --pty and --tcp"},
        {{"--tcp", "0", "--pty", "x"}, 2, "give one of --pty and --tcp"},
        {{"--tcp", "65536"}, 2, "--tcp must be a number from 0 to 65535"},
        {{"--tcp", "0", "--protocol", "hex"}, 2, "--protocol is HEX, XML or auto"},
        {{"--tcp", "0", "--width", "45"}, 2, "--width is 44 or 48"},
        {{"--tcp", "0", "--faults", "fire@1"}, 2, "no such fault: \"fire@1\""},
        {{"--tcp", "0", "--serial", "123456789012345678901"}, 2, "--serial is longer"},
        {{"--nothing"}, 2, "nothing"},
        {{"--tcp", "0", "extra"}, 2, "extra"},
        {{"--pty", folder.filePath("file")}, 1, "exists and is no link"},
        {{"--pty", folder.filePath("none/link")}, 1, "cannot make the link"},
        {{"--tcp", "0", "--journal", folder.path()}, 1, "cannot write"},
    };
    for (const Case& c : cases) {
        Program program(c.arguments);
        program.process.waitForFinished(patience);
        EXPECT_EQ(program.process.exitCode(), c.status) << c.message;
        const QByteArray said = c.status == 0 ? program.process.readAllStandardOutput()
                                              : program.process.readAllStandardError();
        EXPECT_TRUE(said.contains(c.message)) << said.toStdString();
    }
}
