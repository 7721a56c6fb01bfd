// What services that share a database know of each other's documents and registers.

#include "apirig.h"
#include "peers/peers.h"
#include "postgres/postgresstore.h"
#include "sale/postgresserver.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

using namespace frserver;
using sale::DocumentState;

namespace {

bool until(const std::function<bool()>& isSo)
{
    QDeadlineTimer patience(20'000);
    while (!isSo() && !patience.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    return isSo();
}

/// A service with a register of its own.
struct Desk
{
    explicit Desk(const QString& name)
        : till({name, receipt::Protocol::Hex, QTimeZone::utc(), 120, true, "Иванова А. П."})
    {
        api.add(till);
    }

    sale::StoredDocument accept(const QString& id)
    {
        const sale::StoredDocument document = store.accept({id, "sell", R"({"a":1})", till.settings().name});
        api.accepted(document);
        return document;
    }
    /// By its worker, of which only its service hears.
    void issue(const QString& id, quint32 number)
    {
        const int attempt = store.begin(id, {{{"drive", "9999"}, {"lastDocument", 7}}}).value();
        store.settle(id, attempt, {.state = DocumentState::Issued, .documentNumber = number});
    }
    int queued(const QString& name) { return api.openDocuments().count(name, DocumentState::Queued); }

    sale::PostgresStore store{sale::PostgresServer::instance().place()};
    Owners owners{sale::PostgresServer::instance().address(), 1000};
    FakeTill till;
    Api api{store, owners, {}};
    Peers peers{sale::PostgresServer::instance().place(), api, store};
};

class PeersTest : public testing::Test
{
protected:
    PeersTest() { sale::PostgresServer::instance().clear(); }
    static QVariant sql(const QString& statement)
    {
        return sale::PostgresConnection(sale::PostgresServer::instance().place(), 1000).value(statement);
    }
};

TEST_F(PeersTest, WhoeverWaitsElsewhereIsAnsweredAtOnceOrWithTheNextLook)
{
    Desk one("till1");
    Desk two("till2");
    one.accept("document:1");
    ASSERT_TRUE(until([&] { return two.queued("till1") == 1; })) << "it was said";
    const auto first = two.api.waiters().wait("document:1", std::chrono::seconds(60));
    one.issue("document:1", 8);
    one.api.documentChanged("document:1");
    ASSERT_TRUE(until([&] { return first->response().has_value(); }));
    EXPECT_EQ(first->response()->status, 201);
    EXPECT_EQ(two.queued("till1"), 0);
    EXPECT_EQ(two.api.openDocuments().endings().size(), 1);
    // A register of its own is woken by what another service takes in for it.
    one.till.told.clear();
    two.api.accepted(two.store.accept({"document:2", "sell", "{}", "till1"}));
    ASSERT_TRUE(until([&] { return one.till.told.contains("wake"); }));
    EXPECT_EQ(one.queued("till1"), 1);
    // What is not heard, with the connection or with a killed service, is found.
    const auto second = two.api.waiters().wait("document:2", std::chrono::seconds(60));
    one.issue("document:2", 9);
    one.store.accept({"document:3", "sell", "{}", "till1"});
    sql("SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity "
        "WHERE application_name = 'frspf' AND pid <> pg_backend_pid()");
    two.peers.look();
    ASSERT_TRUE(until([&] { return second->response().has_value(); }));
    EXPECT_EQ(second->response()->status, 201);
    EXPECT_EQ(two.queued("till1"), 1);
    // And the new connection hears again.
    two.peers.look();
    one.api.documentChanged("document:3");
    one.accept("document:4");
    EXPECT_TRUE(until([&] { return two.queued("till1") == 2; }));
}

} // namespace
