// The way to PostgreSQL: what is done over it once though it is lost, and who is not let in.

#include "driver/messagelog.h"
#include "journalerror.h"
#include "postgres/postgresfault.h"
#include "postgres/wrongplace.h"
#include "postgresfixture.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

using namespace sale;

namespace {

class Connection : public Postgres
{
protected:
    /// Commits of ids wait until that lock is given up.
    void holdUpCommits()
    {
        connection.execute("CREATE FUNCTION halt() RETURNS trigger LANGUAGE plpgsql AS "
                           "$$ BEGIN PERFORM pg_advisory_xact_lock_shared(7); RETURN NULL; END $$");
        connection.execute("CREATE CONSTRAINT TRIGGER halt AFTER INSERT ON ids "
                           "DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION halt()");
        connection.value("SELECT pg_advisory_lock(7)");
    }
};

TEST_F(Connection, AnyTextIsOneOfAStatementAndNoNameOfAService)
{
    for (const QString& text :
        {QString("a' OR \\' ? $1 %1 --"), QString(QChar::Null), QString("a") + QChar::Null + "b"}) {
        QString kept = text;
        kept.replace(QChar::Null, QChar::ReplacementCharacter);
        EXPECT_EQ(connection.value("SELECT ?::text", {text}).toString(), kept);
    }
    // Services are known by name whatever the address says.
    const PostgresPlace named
        = PostgresPlace::of(server.address() + "&application_name=shop&options=-c%20application_name%3Dshop");
    const QString name = "SELECT current_setting('application_name')";
    EXPECT_TRUE(PostgresConnection(named, 1000).value(name).toString().startsWith("frspf "));
}

TEST_F(Connection, ServerKeepsThePlansOfWhatComesAgainAndNoMoreThanThose)
{
    PostgresConnection one(server.place(), 1000);
    constexpr int many = 130;
    for (const int value : {1, 2}) {
        for (int form = 0; form < many; ++form)
            EXPECT_EQ(one.value(QString("SELECT ?::int + %1").arg(form), {value}).toInt(), form + value);
    }
    const QString count = "SELECT count(*) FROM pg_prepared_statements";
    const int kept = one.value(count).toInt();
    EXPECT_GT(kept, 1);
    EXPECT_LT(kept, many);
    // A list has a form for each of its lengths, and none that is worth it.
    for (int length = 30; length < 40; ++length)
        one.value(
            "SELECT 1 WHERE 1 IN (?" + QString(", ?").repeated(length) + ")", QVariantList(length + 1, 1));
    one.search("SELECT ?::int", {1}, [](const QSqlQuery&) {});
    EXPECT_EQ(one.value(count).toInt(), kept);
    cut();
    EXPECT_EQ(one.value("SELECT ?::int + 1", {3}).toInt(), 4);
}

TEST_F(Connection, ConnectionThatIsCutIsMadeAnewAndNothingIsLostOrDoneTwice)
{
    PostgresStore store(server.place());
    cut();
    store.accept(request("A"));
    cut();
    EXPECT_EQ(store.begin("A", {{{"drive", "9999"}}}), 1);
    cut();
    store.note("A", 1, {.failure = {{"text", "no"}}});
    cut();
    EXPECT_EQ(store.find({.states = {DocumentState::Running}}).size(), 1);
    cut();
    store.settle("A", 1, {.state = DocumentState::Issued, .documentNumber = 8});
    EXPECT_EQ(store.findId("A")->attemptCount, 1);
    // In the middle of what is done together.
    int asked = 0;
    store.accept(request("B"), [&] {
        if (++asked == 1)
            cut();
    });
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(store.findId("B")->state, DocumentState::Queued);
}

TEST_F(Connection, ConnectionThatItsEarFindsCutIsGoneBeforeTheNextOne)
{
    struct Hearing : PostgresConnection
    {
        using PostgresConnection::PostgresConnection;
        bool isOpen() const { return database().isOpen(); }
    };
    Hearing hearing(server.place(), 1000);
    hearing.listen("frspf", [](const QString&) {});
    cut();
    while (hearing.isOpen())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const MessageLog log;
    EXPECT_EQ(hearing.value("SELECT 1").toInt(), 1);
    EXPECT_EQ(MessageLog::taken(), std::vector<std::string>());
}

TEST_F(Connection, WhatWasAcceptedOutlivesThePowerCutAndNothingIsAcceptedWithoutAServer)
{
    PostgresStore store(server.place(), 300);
    store.accept(request("A"));
    server.stopAtOnce();
    EXPECT_THROW(store.accept(request("B")), JournalError);
    EXPECT_THROW(store.findId("A"), JournalError);
    EXPECT_THROW(store.requireRoom(), JournalError);
    server.start();
    store.requireRoom();
    EXPECT_EQ(connection.value("SELECT count(*) FROM ids").toInt(), 1);
    EXPECT_EQ(store.findId("A")->state, DocumentState::Queued);
    EXPECT_FALSE(store.findId("B"));
    EXPECT_EQ(store.accept(request("B")).state, DocumentState::Queued);
}

TEST_F(Connection, WhatIsSaidToBeAcceptedIsThereWhoeverGotTheNumberOfItsTransactionSince)
{
    // The server dies over the commit, of which nothing is on its disk.
    holdUpCommits();
    std::optional<bool> isThere;
    std::thread host([&] {
        PostgresStore store(server.place(), 20'000);
        try {
            store.accept(request("A"));
            isThere = store.findId("A").has_value();
        } catch (const JournalError&) {
            // Nothing is said.
        } catch (const std::exception&) {
            isThere = false;
        }
    });
    const QString waiting = "SELECT count(*) FROM pg_locks WHERE locktype = 'advisory' AND NOT granted";
    while (connection.value(waiting).toInt() == 0) { }
    server.stopAtOnce();
    // Before it is back for the others somebody has written.
    server.runAlone(
        QByteArray("INSERT INTO frspf.frserver_registers VALUES (gen_random_uuid(), '')\n").repeated(50));
    server.start();
    host.join();
    EXPECT_TRUE(isThere.value_or(true));
    EXPECT_EQ(PostgresStore(server.place()).accept(request("A")).state, DocumentState::Queued);
}

TEST_F(Connection, QuestionThatIsNotAnsweredIsAskedAnew)
{
    PostgresConnection asking(server.place(), 10'000);
    const QString process = "SELECT pg_backend_pid()";
    const int former = asking.value(process).toInt();
    asking.setLongestAnswer(std::chrono::milliseconds(0));
    asking.atLeisure([&] { asking.value("SELECT pg_sleep(0.5)"); });
    EXPECT_EQ(asking.value(process).toInt(), former) << "what takes long takes it";
    ::kill(former, SIGSTOP);
    EXPECT_NE(asking.value(process).toInt(), former);
    ::kill(former, SIGCONT);
}

TEST_F(Connection, CommitThatIsNotAnsweredIsAskedAboutAndDoneOnce)
{
    holdUpCommits();
    std::atomic<int> runs = 0;
    std::thread host([&] {
        PostgresConnection writing(server.place(), 30'000);
        writing.setLongestAnswer(std::chrono::milliseconds(500));
        writing.together([&] {
            ++runs;
            writing.execute("INSERT INTO ids VALUES ('A', '', now())");
        });
    });
    // By the connection that is made anew, while the first one is at its commit still.
    const QString connections = "SELECT count(*) FROM pg_stat_activity WHERE pid <> pg_backend_pid() "
                                "AND application_name LIKE 'frspf %'";
    const QDeadlineTimer patience(20'000);
    while (connection.value(connections).toInt() < 2 && !patience.hasExpired()) { }
    EXPECT_FALSE(patience.hasExpired());
    connection.value("SELECT pg_advisory_unlock(7)");
    host.join();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(connection.value("SELECT count(*) FROM ids").toInt(), 1);
}

TEST_F(Connection, WhatWasNotSaidOfATransactionIsNotSaidLater)
{
    PostgresConnection writing(server.place(), 0);
    // The server of another connection is away.
    EXPECT_THROW(writing.together([&] { throwSilence(server.place()); }), JournalError);
    writing.execute("INSERT INTO ids VALUES ('A', '', now())");
    EXPECT_EQ(connection.value("SELECT count(*) FROM ids").toInt(), 1);
}

TEST_F(Connection, WhoeverIsNotLetInIsToldWhatToDo)
{
    connection.execute("DROP ROLE IF EXISTS limited");
    connection.execute("CREATE ROLE limited LOGIN CONNECTION LIMIT 0");
    const std::tuple<const char*, const char*, const char*, bool> rows[] = {
        {"/postgres?", "/nosuch?", "createdb", true},
        {"postgres@", "nobody@", ".pgpass", true},
        {"postgres@", "limited@", "max_connections", false},
        // Options that libpq does not take.
        {"?", "?sslmode=always&", "", true},
        {"?", "?ssl_mode=require&", "", true},
        {"?", "?keepalives_idle=soon&", "", true},
        {"?", "?port=x&", "", true},
    };
    for (const auto& [right, wrong, advice, isOfAddress] : rows) {
        try {
            PostgresConnection(PostgresPlace::of(server.address().replace(right, wrong)), 100);
            FAIL() << wrong;
        } catch (const JournalError& error) {
            EXPECT_TRUE(error.advice().contains(advice)) << error.what();
            EXPECT_EQ(dynamic_cast<const WrongPlace*>(&error) != nullptr, isOfAddress);
            EXPECT_FALSE(QString(error.what()).contains("answers again")) << error.what();
        }
    }
}

TEST(SilentServer, IsNotWaitedForByOneConnectionAfterTheOther)
{
    const QTemporaryDir folder;
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{AF_UNIX, {}};
    qstrncpy(address.sun_path, qPrintable(folder.filePath(".s.PGSQL.5432")), sizeof(address.sun_path));
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(::listen(listener, 2), 0);
    const PostgresPlace place
        = PostgresPlace::of("postgresql://postgres@/postgres?connect_timeout=0&host=" + folder.path());
    EXPECT_THROW(PostgresConnection(place, 100), JournalError);
    QElapsedTimer second;
    second.start();
    EXPECT_THROW(PostgresConnection(place, 100), JournalError);
    EXPECT_LT(second.elapsed(), 1'000);
    ::close(listener);
}

} // namespace
