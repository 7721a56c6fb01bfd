#include "program/program.h"

#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <QUrl>

namespace {

/// One request over a connection of its own, whose answer is read later.
class HttpClient
{
public:
    HttpClient(const QString& url, const QByteArray& method, const QByteArray& target,
        const QByteArray& body = {}, const QByteArray& token = {})
    {
        socket.connectToHost(QUrl(url).host(), static_cast<quint16>(QUrl(url).port()));
        socket.waitForConnected(patience);
        const QByteArray authorization = token.isEmpty() ? "" : "Authorization: Bearer " + token + "\r\n";
        socket.write(method + ' ' + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n"
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
    const Seen again(state);
    EXPECT_TRUE(again.ask("GET", "/v1/documents").contains("\"number\":2"));
    EXPECT_EQ(sendAll(again.ready, {0xA7}).code, 0);
    EXPECT_TRUE(again.ask("GET", "/v1/exchanges/1").contains("\"document\":null"))
        << "what earlier runs stored is not its";
    EXPECT_TRUE(again.ask("POST", "/v1/snapshots/closed/restore").contains("\"documents\":1"));
    EXPECT_EQ(sendAll(again.ready, {0xA7, 0x00, 0xA0}).code, 0);
}

TEST(PanelProgram, OthersAreLetInWithATokenAlone)
{
    const QByteArray token = "0123456789abcdef";
    const Seen seen({"--panel-address", "127.0.0.2", "--panel-token", token});
    EXPECT_TRUE(seen.url.startsWith("http://127.0.0.2:")) << seen.url.toStdString();
    EXPECT_TRUE(seen.ask("GET", "/v1/state").startsWith("HTTP/1.1 401"));
    EXPECT_TRUE(seen.ask("GET", "/v1/state", {}, token).startsWith("HTTP/1.1 200"));
    const std::pair<QStringList, const char*> wrong[]
        = {{{"--panel", "x"}, "what is \"x\"?"}, {{"--panel-address", "0.0.0.0"}, "goes with --panel"},
            {{"--panel", "--panel-address", "0.0.0.0"}, "let in with --panel-token"},
            {{"--panel", "--panel-token", "short"}, "at least 16 characters"},
            {{"--panel", "70000"}, "--panel is a port"}, {{"--registers", "0"}, "--registers is a number"},
            {{"--panel", "0", "--panel-address", "192.0.2.1", "--panel-token", token}, "cannot listen"}};
    for (const auto& [arguments, words] : wrong) {
        Program program(QStringList{"--tcp", "0"} + arguments);
        const QString said = program.ready();
        EXPECT_TRUE(said.contains(words)) << said.toStdString();
    }
}
