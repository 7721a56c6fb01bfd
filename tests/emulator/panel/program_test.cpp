#include "memory/memory.h"
#include "program/program.h"

#include <gtest/gtest.h>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUrl>

namespace {

/// One request over a connection of its own, whose answer is read later.
class HttpClient
{
public:
    HttpClient(const QString& url, const QByteArray& method, const QByteArray& target,
        const QByteArray& body = {}, const QByteArray& token = {}, const QByteArray& host = "127.0.0.1")
    {
        socket.connectToHost(QUrl(url).host(), static_cast<quint16>(QUrl(url).port()));
        socket.waitForConnected(patience);
        const QByteArray authorization = token.isEmpty() ? "" : "Authorization: Bearer " + token + "\r\n";
        socket.write(method + ' ' + target + " HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n"
            + authorization + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        socket.waitForBytesWritten(patience);
    }
    /// Head and body.
    QByteArray answer()
    {
        while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead(patience)) { }
        return socket.readAll();
    }

    QTcpSocket socket;
};

/// A program with a panel: the line of its last register and the panel's address.
struct Seen
{
    explicit Seen(const QStringList& arguments)
        : program(QStringList{"--tcp", "0", "--panel", "0"} + arguments)
    {
        for (QString line = program.ready(); !line.isEmpty(); line = program.ready()) {
            if (line.contains("ready on"))
                ready = line;
            url = line.section("panel on ", 1);
            if (!url.isEmpty())
                break;
        }
    }
    QByteArray ask(const QByteArray& method, const QByteArray& target, const QByteArray& body = {},
        const QByteArray& token = {}) const
    {
        return HttpClient(url, method, target, body, token).answer();
    }

    Program program;
    QString ready;
    QString url;
};

} // namespace

TEST(PanelProgram, ASuiteWaitsForTheDocumentOfASaleThatIsGoingOn)
{
    const Seen seen({"--registers", "3", "--drive", "9999000000000042"});
    const QByteArray registers = seen.ask("GET", "/v1/registers");
    for (const char* const part : {"HTTP/1.1 200", "9999000000000042", "9999000000000044"})
        EXPECT_TRUE(registers.contains(part)) << registers.constData();
    EXPECT_TRUE(seen.ask("GET", "/v1/state").contains("\"open\":false"));
    HttpClient waiting(seen.url, "GET", "/v1/registers/3/wait?event=document&type=openShift");
    HttpClient other(seen.url, "GET", "/v1/wait?event=document&timeout=0");
    EXPECT_TRUE(other.answer().startsWith("HTTP/1.1 204"));
    openShift(seen.ready);
    const QByteArray told = waiting.answer();
    EXPECT_TRUE(told.contains("\"register\":3") && told.contains("\"number\":2")) << told.constData();
    EXPECT_TRUE(seen.ask("PUT", "/v1/registers/3/paper", R"({"state":"out"})").contains("\"out\""));
    EXPECT_EQ(sendAll(seen.ready, {0x61}).code, 8);
    EXPECT_TRUE(seen.ask("PUT", "/v1/registers/3/power", R"({"state":"off"})").contains("\"off\""));
    EXPECT_TRUE(seen.ask("GET", "/v1/registers/3/documents/2.svg").contains("image/svg+xml"));
}

TEST(PanelProgram, WithoutALineItHasOneOfItsOwnThatItTells)
{
    const QTemporaryDir folder;
    const QStringList two{"--registers", "2", "--state", folder.path()};
    Seen(two).program.stop(SIGTERM);
    // Without the panel it would end then.
    Program program(QStringList{"--panel", "0", "--snapshot", "begun"} + two);
    const QString first = program.ready().section("ready on ", 1);
    const QString second = program.ready().section("ready on ", 1);
    const QByteArray registers
        = HttpClient(program.ready().section("panel on ", 1), "GET", "/v1/registers").answer();
    EXPECT_NE(first, second);
    for (const QString& line : {first, second}) {
        EXPECT_TRUE(registers.contains("\"line\":\"" + line.toUtf8() + '"')) << registers.constData();
        QFile host(line);
        ASSERT_TRUE(host.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) << line.toStdString();
        host.write("\x05");
        EXPECT_EQ(host.read(1), "\x06");
    }
}

TEST(PanelProgram, SnapshotsOfAStateAreKeptInItsFolder)
{
    const QTemporaryDir folder;
    const QStringList state{"--state", folder.path(), "--drive", "9999000000000042"};
    {
        const Seen seen(state);
        EXPECT_TRUE(seen.ask("PUT", "/v1/snapshots/closed").contains("[\"closed\"]"));
        openShift(seen.ready);
        EXPECT_TRUE(seen.ask("POST", "/v1/snapshots/closed/restore").contains("\"documents\":1"));
        openShift(seen.ready);
        EXPECT_TRUE(seen.ask("PUT", "/v1/snapshots/open").contains("[\"closed\",\"open\"]"));
        EXPECT_TRUE(seen.ask("POST", "/v1/reset").contains("\"documents\":1"));
        openShift(seen.ready);
    }
    Program former(QStringList{"--tcp", "0"} + state);
    EXPECT_TRUE(former.ready().contains("its --drive is 9999000000000043, not 9999000000000042"));
    const Seen again({"--state", folder.path()});
    EXPECT_TRUE(again.ask("GET", "/v1/documents").contains("\"number\":2"));
    EXPECT_EQ(sendAll(again.ready, {0xA7}).code, 0);
    EXPECT_TRUE(again.ask("GET", "/v1/exchanges/1").contains("\"document\":null"))
        << "what earlier runs stored is not its";
    EXPECT_TRUE(again.ask("POST", "/v1/snapshots/closed/restore").contains("\"documents\":1"));
    EXPECT_EQ(sendAll(again.ready, {0xA7, 0x00, 0xA0}).code, 0);
    EXPECT_TRUE(again.ask("DELETE", "/v1/snapshots/closed").startsWith("HTTP/1.1 204"));
    EXPECT_TRUE(again.ask("GET", "/v1/snapshots").contains("[\"open\"]"));
}

TEST(PanelProgram, SnapshotOfAnotherRegisterIsRefused)
{
    const QTemporaryDir folder;
    const QTemporaryDir other;
    for (const auto& [name, serial] : {std::pair{&folder, "A1"}, std::pair{&other, "B1"}}) {
        const Seen seen({"--state", name->path(), "--serial", serial});
        seen.ask("PUT", "/v1/snapshots/first");
    }
    EXPECT_TRUE(
        QFile::copy(other.filePath("snapshots/first.sqlite"), folder.filePath("snapshots/foreign.sqlite")));
    const Seen seen({"--state", folder.path()});
    openShift(seen.ready);
    const QByteArray refused = seen.ask("POST", "/v1/snapshots/foreign/restore");
    EXPECT_TRUE(refused.startsWith("HTTP/1.1 409") && refused.contains("it is of the register B1, model 3"))
        << refused.constData();
    EXPECT_TRUE(seen.ask("GET", "/v1/state").contains("\"documents\":2")) << "nothing is lost";
    EXPECT_TRUE(seen.ask("POST", "/v1/snapshots/first/restore").contains("\"documents\":1"));
}

TEST(PanelProgram, StateThatCannotBeKeptStopsItsRegisterAlone)
{
    const QTemporaryDir folder;
    Seen seen({"--registers", "2", "--state", folder.path()});
    openShift(seen.ready);
    {
        const emulator::Database intruder(
            emulator::StateFolder::stateFileOf(folder.filePath("2")), emulator::Database::Access::ReadWrite);
        intruder.execute("BEGIN IMMEDIATE");
        HttpClient waiting(seen.url, "GET", "/v1/registers/2/wait?event=state&part=power");
        seen.ask("GET", "/v1/registers");
        QTcpSocket host;
        host.connectToHost("127.0.0.1", seen.ready.section(':', -1).toUShort());
        host.waitForConnected(patience);
        host.write(Rig().frame({0x61, {"Иванова", ""}}));
        host.waitForBytesWritten(patience);
        EXPECT_TRUE(waiting.answer().contains("\"part\":\"power\""));
        const QByteArray state = seen.ask("GET", "/v1/registers/2/state");
        for (const char* const part : {"\"documents\":2", "\"state\":\"off\"", "\"stopped\":\"", "locked"})
            EXPECT_TRUE(state.contains(part)) << part << state.constData();
        EXPECT_EQ(host.bytesAvailable(), 0) << "nothing is told of what is not kept";
        EXPECT_TRUE(seen.ask("GET", "/v1/registers/2/documents").contains("\"documents\":[{"));
        const QByteArray change = seen.ask("PUT", "/v1/registers/2/power", R"({"state":"on"})");
        EXPECT_TRUE(change.startsWith("HTTP/1.1 500") && change.contains("has stopped"))
            << change.constData();
        const emulator::Database another(
            emulator::StateFolder::stateFileOf(folder.filePath("1")), emulator::Database::Access::ReadWrite);
        EXPECT_TRUE(seen.ask("PUT", "/v1/paper", R"({"state":"out"})").contains("\"out\""))
            << "the first works";
        another.execute("BEGIN IMMEDIATE");
        EXPECT_TRUE(seen.ask("PUT", "/v1/paper", R"({"state":"in"})").startsWith("HTTP/1.1 500"));
        EXPECT_TRUE(seen.program.process.waitForFinished(patience)) << "none is left";
        EXPECT_EQ(seen.program.process.exitCode(), 1);
    }
    const Seen again({"--registers", "2", "--state", folder.path()});
    EXPECT_TRUE(again.ask("GET", "/v1/registers/2/state").contains("\"documents\":2"));
}

TEST(PanelProgram, EachResetOfEachRegisterHasADriveOfItsOwn)
{
    const Seen seen({"--registers", "2", "--drive", "9999000000000042"});
    const std::pair<const char*, const char*> rows[]
        = {{"1", "9999000000000044"}, {"2", "9999000000000045"}, {"1", "9999000000000046"}};
    for (const auto& [number, drive] : rows)
        EXPECT_TRUE(seen.ask("POST", QByteArray("/v1/registers/") + number + "/reset").contains(drive))
            << drive;
}

TEST(PanelProgram, TellsAnAddressThatABrowserOpens)
{
    const Seen seen({"--panel-address", "0.0.0.0", "--panel-token", "0123456789abcdef"});
    EXPECT_TRUE(seen.url.contains(" (here http://127.0.0.1:")) << seen.url.toStdString();
}

TEST(PanelProgram, IsAskedForByTheNamesThatItWasGiven)
{
    const Seen seen({"--panel-host", "till.example", "--panel-host", "register"});
    const std::pair<const char*, const char*> rows[]
        = {{"register:8402", "200"}, {"till.example", "200"}, {"shop.example", "421"}};
    for (const auto& [host, status] : rows) {
        const QByteArray answer = HttpClient(seen.url, "GET", "/v1/state", {}, {}, host).answer();
        EXPECT_TRUE(answer.startsWith(QByteArray("HTTP/1.1 ") + status)) << host << answer.constData();
    }
}

TEST(PanelProgram, OthersAreLetInWithATokenAlone)
{
    const QByteArray token = "0123456789abcdef";
    const Seen seen({"--panel-address", "127.0.0.2", "--panel-token", token});
    EXPECT_TRUE(seen.url.startsWith("http://127.0.0.2:")) << seen.url.toStdString();
    EXPECT_TRUE(seen.ask("GET", "/v1/state").startsWith("HTTP/1.1 401"));
    EXPECT_TRUE(seen.ask("GET", "/v1/state", {}, token).startsWith("HTTP/1.1 200"));
    const std::pair<QStringList, const char*> wrong[] = {{{"--panel", "x"}, "--panel is a port"},
        {{"--panel-address", "0.0.0.0"}, "goes with --panel"},
        {{"--panel", "--panel-address", "0.0.0.0"}, "let in with --panel-token"},
        {{"--panel", "--panel-token", "short"}, "at least 16 characters"},
        {{"--panel-host", "till.example"}, "goes with --panel"},
        {{"--panel", "--panel-host", "till.example:80"}, "--panel-host is the name"},
        {{"--panel", "70000"}, "--panel is a port"},
        {{"--registers", "3", "--drive", "9999999999999998"}, "--drive ends with digits that 3 registers"},
        {{"--registers", "2", "--drive", "1234"}, "--drive is 9999 and 12 more digits"},
        {{"--registers", "2", "--serial", "ABC"}, "--serial ends with digits that 2 registers"},
        {{"--registers", "2", "--serial", "A9"}, "--serial ends with digits that 2 registers"},
        {{"--clock", "2100-01-01T00:00:00"}, "2000 to 2099"}, {{"--faults", "lost:5@3"}, "no such fault"},
        {{"--registers", "0"}, "--registers is a number"},
        {{"--panel", "0", "--panel-address", "192.0.2.1", "--panel-token", token}, "cannot listen"}};
    for (const auto& [arguments, words] : wrong) {
        Program program(QStringList{"--tcp", "0"} + arguments);
        const QString said = program.ready();
        EXPECT_TRUE(said.contains(words)) << said.toStdString();
    }
}
