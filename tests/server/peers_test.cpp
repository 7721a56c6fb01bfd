// What services that share a database know of each other's documents and registers.

#include "peersrig.h"
#include "postgres/processidentity.h"

using namespace frserver;
using sale::DocumentState;

namespace {

TEST_F(PeersTest, WhoeverWaitsElsewhereIsAnsweredAtOnceOrWithTheNextLook)
{
    Desk one("till1");
    Desk two("till2");
    one.accept("document:1");
    ASSERT_TRUE(becomes([&] { return two.queued("till1") == 1; })) << "it was said";
    const auto first = two.api.waiters().wait("document:1", std::chrono::seconds(60));
    one.issue("document:1", 8);
    one.api.documentChanged("document:1");
    ASSERT_TRUE(becomes([&] { return first->response().has_value(); }));
    EXPECT_EQ(first->response()->status, 201);
    EXPECT_EQ(two.queued("till1"), 0);
    EXPECT_EQ(two.api.openDocuments().endings().size(), 1);
    // A register of its own is woken by what another service takes in for it.
    one.till.told.clear();
    two.api.accepted(two.store.accept({"document:2", "sell", "{}", "till1"}));
    ASSERT_TRUE(becomes([&] { return one.till.told.contains("wake"); }));
    EXPECT_EQ(one.queued("till1"), 1);
    // What is not heard, with the connection or with a killed service, is found.
    const auto second = two.api.waiters().wait("document:2", std::chrono::seconds(60));
    one.issue("document:2", 9);
    one.store.accept({"document:3", "sell", "{}", "till1"});
    cut();
    two.peers.look();
    ASSERT_TRUE(becomes([&] { return second->response().has_value(); }));
    EXPECT_EQ(second->response()->status, 201);
    EXPECT_EQ(two.queued("till1"), 1);
    // And the new connection hears again.
    two.peers.look();
    one.api.documentChanged("document:3");
    one.accept("document:4");
    EXPECT_TRUE(becomes([&] { return two.queued("till1") == 2; }));
}

TEST_F(PeersTest, RegisterOfAnotherServiceIsSeenAndObeys)
{
    Desk one("till1");
    Desk two("till2");
    EXPECT_EQ(two.view("till1").value("state"), "ready") << "from the start";
    EXPECT_EQ(two.view("till1").value("service"), "till1:8403");
    ASSERT_TRUE(becomes([&] { return one.view("till2").value("service") == "till2:8403"; }));
    // What waits in a pool is told as any register of it would make it, also where this service has none.
    FakePool shop({"shop"});
    two.api.add(shop);
    sale::DocumentRequest pooled{"document:9", "cashIn", cashIn, {}};
    pooled.pool = "shop";
    two.store.accept(pooled);
    EXPECT_EQ(two.ask("GET", "/v1/documents/document:9").json().value("total"), 100.5);
    // Also when the database's clock is put back meanwhile.
    connection.execute("UPDATE frspf.registers SET told = told + interval '1 hour'");
    two.peers.look();
    one.till.state = "waiting";
    one.till.waiting = "paper";
    one.api.registerChanged("till1");
    ASSERT_TRUE(becomes([&] { return two.view("till1").value("waiting") == "paper"; }));
    // Each order once, in the end by the register itself.
    const auto pausing = two.pause("anna");
    ASSERT_TRUE(pausing.pending);
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/accept", R"({"by":"anna","note":"seen"})").status, 202);
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/resume", R"({"by":"anna"})").status, 202);
    two.api.till("till1")->settle("document:1");
    two.api.till("till1")->setAwaited("document:1", true);
    const QStringList ordered{"pause by anna", "anna accepts: seen", "resume by anna", "settle document:1"};
    ASSERT_TRUE(becomes([&] { return one.till.told.contains("settle document:1"); }));
    EXPECT_TRUE(one.till.told.removeOne("document:1 awaited"));
    EXPECT_EQ(one.till.told, ordered);
    EXPECT_TRUE(two.till.told.isEmpty());
    one.peers.look();
    EXPECT_EQ(one.till.told, ordered);
    one.till.state = "paused";
    one.api.registerChanged("till1");
    ASSERT_TRUE(becomes([&] { return pausing.pending->response().has_value(); }));
    EXPECT_EQ(pausing.later().status, 200);
    // Whoever waited for it may be gone.
    one.accept("document:1");
    one.issue("document:1", 8);
    one.api.documentChanged("document:1");
    EXPECT_TRUE(one.till.told.contains("document:1 not awaited"));
    // A counter is that of the service, which another one does not continue; a gauge is not.
    const QByteArray metrics = two.ask("GET", "/metrics").body;
    EXPECT_TRUE(metrics.contains(R"(frserver_connections_total{register="till1",service="till1:8403"} 2)"));
    EXPECT_TRUE(metrics.contains(R"(frserver_unsent_documents{register="till1"} 4)"));
    EXPECT_TRUE(metrics.contains(R"(frserver_register_state{register="till1",state="paused")"));
}

TEST_F(PeersTest, QueueIsAsLongWhicheverServiceIsAsked)
{
    const Desk one("till1", nullptr, 2);
    Spare spare(5);
    Desk two("till2", &spare, 3);
    FakePool shop({"shop", {"till2"}, {}, {}, 300});
    two.api.add(shop);
    QFile file(FRSPF_SOURCES "/examples/sale.json");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QJsonObject sale = QJsonDocument::fromJson(file.readAll()).object();
    const auto accepted = [&](const QByteArray& place) {
        int count = 0;
        for (int each = 0; each < 9; ++each) {
            sale["id"] = QString(place).replace('/', ':') + QString::number(each);
            count
                += two.ask("POST", "/v1/" + place + "/documents", QJsonDocument(sale).toJson()).status == 202;
        }
        return count;
    };
    EXPECT_EQ(accepted("registers/till1"), 2);
    EXPECT_EQ(accepted("registers/till2"), 3);
    EXPECT_EQ(accepted("pools/shop"), 3) << "both serve it";
}

TEST_F(PeersTest, NoRegisterIsDeniedBeforeTheOthersAreKnown)
{
    Desk two("till2");
    const Desk one("till1");
    two.store.accept({"document:1", "sell", "{}", "till1"});
    two.store.begin("document:1", {{{"drive", "9999"}, {"lastDocument", 7}}});
    // As one begins whose database does not answer just then.
    connection.execute("ALTER TABLE frspf.services RENAME TO hidden");
    Desk late("till3");
    const QByteArray word = R"({"state":"notIssued","note":"not on the tape"})";
    for (const auto& [method, target, body] :
        {std::tuple<QByteArray, QByteArray, QByteArray>{"GET", "/v1/registers/till1", {}},
            {"POST", "/v1/registers/till1/documents", "{}"},
            {"POST", "/v1/documents/document:1/resolve", word}}) {
        const Served answer = late.ask(method, target, body);
        EXPECT_EQ(answer.status, 503) << answer.all();
        EXPECT_FALSE(answer.headers.value("Retry-After").isEmpty());
    }
    EXPECT_EQ(late.ask("GET", "/v1/registers/till3").status, 200) << "its own";
    connection.execute("ALTER TABLE frspf.hidden RENAME TO services");
    // What was told is known at once, and only then the rest is denied.
    EXPECT_EQ(two.view("till1").value("state"), "ready");
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:1/resolve", word).status, 409);
    EXPECT_EQ(two.ask("GET", "/v1/registers/till4").status, 404);
}

TEST_F(PeersTest, RegisterOfADeadServiceIsUnreachableAndWhatItBegunAPersonsCase)
{
    std::optional<Desk> one(std::in_place, "till1");
    Desk two("till2");
    for (const QString id : {"document:1", "document:2"}) {
        one->accept(id);
        one->store.begin(id, {{{"drive", "9999"}, {"lastDocument", 7}}});
        one->api.documentChanged(id);
    }
    ASSERT_TRUE(becomes([&] { return two.api.openDocuments().count("till1", DocumentState::Running) == 2; }));
    const QByteArray word = R"({"state":"issued","documentNumber":8})";
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:1/resolve", word).status, 409) << "it may go on";
    // As if it were killed, a minute ago.
    connection.execute(
        "UPDATE frspf.services SET seen = seen - interval '1 minute' WHERE name = 'till1:8403'");
    two.peers.look();
    const QJsonObject view = two.view("till1");
    EXPECT_EQ(view.value("state"), "unreachable");
    EXPECT_EQ(view.value("queue").toObject().value("running"), 2);
    EXPECT_FALSE(view.value("since").toString().isEmpty());
    EXPECT_TRUE(two.ask("GET", "/metrics").body.contains(R"({register="till1",state="unreachable")"));
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/pause", "{}").status, 503);
    EXPECT_EQ(two.ask("GET", "/v1/documents/document:1").text("waiting"), "unreachable");
    const Served low
        = two.ask("POST", "/v1/documents/document:1/resolve", R"({"state":"issued","documentNumber":7})");
    EXPECT_EQ(low.status, 409);
    EXPECT_TRUE(low.text("detail").contains("reached number 7")) << low.all();
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:1/resolve", word).status, 200);
    EXPECT_EQ(two.store.findId("document:1")->state, DocumentState::Issued);
    // Nobody waits for that service for ever, by what was seen here: the database has been away for long, or
    // its clock has jumped, or somebody has the register by now and did not tell of it yet.
    constexpr std::chrono::seconds almostForever(290);
    const auto waiting = two.api.waiters().wait("document:2", std::chrono::seconds(60));
    connection.execute(
        "UPDATE frspf.services SET seen = seen - interval '5 minutes' WHERE name = 'till1:8403'");
    connection.execute("UPDATE frspf.documents SET begun = begun - interval '10 minutes'");
    one->accept("document:4");
    one->store.begin("document:4", {{{"drive", "9999"}, {"lastDocument", 8}}});
    two.lookFor(almostForever);
    two.now += std::chrono::minutes(1);
    two.lookFor(almostForever);
    connection.execute(
        "INSERT INTO frspf.leases (register, until) VALUES ('till1', now() + interval '1 hour')");
    two.lookFor(almostForever);
    connection.execute("UPDATE frspf.leases SET until = now()");
    two.lookFor(almostForever);
    EXPECT_EQ(two.store.findId("document:2")->state, DocumentState::Running);
    two.lookFor(std::chrono::seconds(20));
    ASSERT_TRUE(waiting->response().has_value());
    EXPECT_EQ(waiting->response()->status, 409);
    EXPECT_EQ(two.store.findId("document:2")->state, DocumentState::Unknown);
    EXPECT_TRUE(two.store.findId("document:2")->isToBeAsked());
    EXPECT_EQ(two.store.findId("document:4")->state, DocumentState::Running) << "frctl may be at it";
    // What waits is accepted, and can go elsewhere.
    two.store.accept({"document:3", "sell", R"({"a":1})", "till1"});
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:3/move", R"({"register":"till2"})").status, 200);
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:2/move", R"({"register":"till2"})").status, 409);
    // It is back, and then ends as services do.
    one->peers.look();
    two.peers.look();
    EXPECT_EQ(two.view("till1").value("state"), "ready");
    one.reset();
    EXPECT_TRUE(becomes([&] { return two.view("till1").value("state") == "unreachable"; })) << "at once";
}

TEST_F(PeersTest, RegisterOfTwoServicesIsShownAsItsOwnerTells)
{
    Desk one("till1");
    Spare spare;
    Desk two("till2", &spare);
    EXPECT_EQ(two.view("till1").value("state"), "ready");
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/resume", "{}").status, 202);
    ASSERT_TRUE(becomes([&] { return !one.till.told.isEmpty(); }));
    // It may have a pause in mind that the database was lost over, and is told by itself then.
    connection.execute("ALTER TABLE frspf.orders RENAME TO hidden");
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/resume", "{}").status, 503);
    connection.execute("ALTER TABLE frspf.hidden RENAME TO orders");
    EXPECT_EQ(spare.told.size(), 2);
    EXPECT_EQ(spare.told.filter("resume"), spare.told);
    // It changes hands.
    one.till.isOwner = false;
    one.till.state = "standby";
    spare.isOwner = true;
    spare.state = "making";
    one.api.registerChanged("till1");
    two.api.registerChanged("till1");
    ASSERT_TRUE(becomes([&] { return one.view("till1").value("state") == "making"; }));
    EXPECT_EQ(one.view("till1").value("service"), "till2:8403");
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/resume", "{}").status, 200);
    // The one is gone, and the other one waits for a person to say that the register was moved.
    one.accept("document:1");
    one.store.begin("document:1", {{{"drive", "9999"}, {"lastDocument", 7}}});
    one.api.documentChanged("document:1");
    const QByteArray word = R"({"state":"notIssued","note":"not on the tape"})";
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:1/resolve", word).status, 409);
    spare.isOwner = false;
    spare.waiting = "otherMachine";
    one.till.isOwner = true;
    one.api.registerChanged("till1");
    one.peers.look();
    ASSERT_TRUE(becomes([&] { return two.view("till1").value("service") == "till1:8403"; }));
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:1/resolve", word).status, 409);
    connection.execute(
        "UPDATE frspf.services SET seen = seen - interval '1 minute' WHERE name = 'till1:8403'");
    two.peers.look();
    EXPECT_EQ(two.view("till1").value("waiting"), "otherMachine");
    EXPECT_EQ(two.ask("GET", "/v1/documents/document:1").text("waiting"), "unreachable");
    EXPECT_EQ(two.ask("POST", "/v1/documents/document:1/resolve", word).status, 200);
    // Whoever has it next is to pause it, and not this one on a day on which nobody expects that.
    const Served paused = two.pause("anna");
    EXPECT_TRUE(paused.pending);
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/resume", "{}").status, 202);
    EXPECT_FALSE(spare.told.contains("pause by anna"));
    spare.isOwner = true;
    spare.waiting.clear();
    spare.state = "paused";
    two.peers.look();
    EXPECT_TRUE(spare.told.contains("pause by anna"));
    EXPECT_EQ(paused.later().status, 200);
}

TEST_F(PeersTest, WhatHasLeftItsServicesConfigurationIsForgotten)
{
    Desk left("till1");
    left.accept("document:1");
    const auto isLeftBehind = [this](const QString& service, const QStringList& registers) {
        rackboard::forgetOthers(connection, service, registers);
        return !connection.value("SELECT 1 FROM frspf.registers WHERE name = 'till1'").isNull();
    };
    const QString lease = "INSERT INTO frspf.leases (register, machine) VALUES ('till1', '%1') "
                          "ON CONFLICT (register) DO UPDATE SET machine = excluded.machine";
    const QString machine = sale::ProcessIdentity::own().machine;
    connection.execute(lease.arg(machine));
    EXPECT_TRUE(isLeftBehind("till1:8403", {"till2"})) << "a document waits for it";
    left.store.withdraw("document:1");
    EXPECT_TRUE(isLeftBehind("till1:8403", {"till2", "till1"})) << "it is there still";
    EXPECT_TRUE(isLeftBehind("till2:8403", {"till2"})) << "another service has it";
    connection.execute(lease.arg("another"));
    EXPECT_TRUE(isLeftBehind("till1:8403", {"till2"})) << "a machine that is called alike has it";
    connection.execute(lease.arg(machine));
    EXPECT_FALSE(isLeftBehind("till1:8403", {"till2"}));
}

} // namespace
