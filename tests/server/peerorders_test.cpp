// What one service is to do with a register, as another one was asked.

#include "peersrig.h"

using namespace frserver;
using sale::DocumentState;

namespace {

TEST_F(PeersTest, OrderIsAnsweredByWhatTheOwnerToldBehindItAlone)
{
    Desk one("till1");
    Desk two("till2");
    one.turn("paused");
    ASSERT_TRUE(becomes([&] { return two.view("till1").value("state") == "paused"; }));
    // Others have resumed it meanwhile, and it prints.
    one.till.state = "making";
    const Served paused = two.pause("anna");
    ASSERT_TRUE(paused.pending) << paused.all();
    // Also what is told before the order is there is of a time before.
    connection.execute("UPDATE frspf.registers SET told = clock_timestamp() WHERE name = 'till1'");
    two.peers.look();
    two.api.registerChanged("till1");
    EXPECT_EQ(paused.later().status, 0);
    one.turn("pausing");
    ASSERT_TRUE(becomes([&] { return two.view("till1").value("state") == "pausing"; }));
    EXPECT_EQ(one.till.told, QStringList("pause by anna"));
    EXPECT_EQ(paused.later().status, 0);
    one.turn("paused");
    ASSERT_TRUE(becomes([&] { return paused.later().status == 200; }));
    EXPECT_EQ(paused.later().text("state"), "paused");
    // Once more, of which nothing is to be seen.
    const Served again = two.pause("anna");
    EXPECT_TRUE(again.pending);
    EXPECT_TRUE(becomes([&] { return again.later().status == 200; }));
    // Whoever does not wait is told that it was passed on, by a service that may be frozen.
    for (const QByteArray prefer : {"", "wait=0"})
        EXPECT_EQ(two.pause("anna", prefer).status, 202);
}

TEST_F(PeersTest, WhatOthersWereAskedBeforeIsFollowedBefore)
{
    Desk one("till1");
    Desk two("till2");
    one.turn("paused");
    ASSERT_TRUE(becomes([&] { return two.view("till1").value("state") == "paused"; }));
    // Of which its owner has not heard yet.
    EXPECT_EQ(two.ask("POST", "/v1/registers/till1/resume", R"({"by":"anna"})").status, 202);
    one.ask("POST", "/v1/registers/till1/pause", R"({"by":"boris"})");
    EXPECT_EQ(one.till.told, QStringList({"resume by anna", "pause by boris"}));
}

TEST_F(PeersTest, DocumentThatIsAskedAboutElsewhereIsStillUnknownOnceItsOwnerSaysSo)
{
    Desk one("till1");
    Desk two("till2");
    Desk three("till3");
    const QByteArray post = R"({"id":"document:1","type":"xReport"})";
    ASSERT_EQ(one.ask("POST", "/v1/registers/till1/documents", post).status, 202);
    one.store.settle("document:1", one.store.begin("document:1", {{{"drive", "9999"}}}).value(), {});
    const Served asked = two.ask("POST", "/v1/registers/till1/documents", post);
    ASSERT_TRUE(asked.pending) << asked.all();
    // What others have heard of a time before.
    three.api.documentChanged("document:1");
    three.accept("document:2");
    ASSERT_TRUE(becomes([&] { return two.queued("till3") == 1; }));
    ASSERT_TRUE(becomes([&] { return one.till.told.contains("settle document:1"); }));
    EXPECT_EQ(asked.later().status, 0);
    one.api.documentChanged("document:1");
    ASSERT_TRUE(becomes([&] { return asked.later().status == 409; }));
    EXPECT_EQ(asked.later().text("state"), "unknown");
    // Nobody asks.
    one.till.isOwner = false;
    const Served lost = two.ask("POST", "/v1/registers/till1/documents", post);
    makeOrdersOld();
    two.peers.look();
    EXPECT_EQ(lost.later().status, 409) << lost.later().all();
}

TEST_F(PeersTest, OrderIsFollowedInTimeByWhoeverHasTheRegisterOrByNobody)
{
    Desk one("till1");
    Spare next;
    Desk two("till2", &next);
    Desk three("till3");
    one.till.waiting = "needsReview";
    one.turn("waiting");
    ASSERT_TRUE(becomes([&] { return three.view("till1").value("waiting") == "needsReview"; }));
    // Whoever is told to work it has just lost it.
    one.till.isOwner = false;
    const Served first = three.pause("anna");
    ASSERT_TRUE(first.pending);
    EXPECT_EQ(three.ask("POST", "/v1/registers/till1/resume", R"({"by":"anna"})").status, 202);
    one.peers.look();
    two.peers.look();
    EXPECT_EQ(one.till.told + next.told, QStringList());
    next.isOwner = true;
    two.peers.look();
    EXPECT_EQ(next.told, (QStringList{"pause by anna", "resume by anna"}));
    // Nobody has it for long, and then nobody expects that any more.
    next.isOwner = false;
    next.told.clear();
    const Served second = three.pause("boris");
    ASSERT_TRUE(second.pending);
    makeOrdersOld();
    const QByteArray accept = "/v1/registers/till1/accept";
    const QByteArray word = R"({"by":"clara","note":"seen"})";
    EXPECT_EQ(three.ask("POST", accept, word).status, 202);
    EXPECT_EQ(three.ask("POST", "/v1/registers/till1/resume", R"({"by":"clara"})").status, 202);
    EXPECT_EQ(second.later().status, 0);
    three.peers.look();
    EXPECT_EQ(second.later().status, 503) << second.later().all();
    EXPECT_EQ(first.later().status, 0) << "that one was followed";
    // Those behind it are in time still. What the next one waits for nobody has seen yet.
    next.isOwner = true;
    next.waiting = "newDrive";
    two.peers.look();
    EXPECT_EQ(next.told, QStringList("resume by clara"));
    next.waiting = "needsReview";
    EXPECT_EQ(three.ask("POST", accept, word).status, 202);
    two.peers.look();
    EXPECT_EQ(next.told, (QStringList{"resume by clara", "clara accepts: seen"}));
    next.told.clear();
    // Also before whoever has asked looks.
    three.pause("clara");
    makeOrdersOld();
    two.peers.look();
    EXPECT_EQ(next.told, QStringList());
    EXPECT_EQ(connection.value("SELECT count(*) FROM frspf.orders").toInt(), 1);
    three.peers.look();
    EXPECT_EQ(connection.value("SELECT count(*) FROM frspf.orders").toInt(), 0);
}

} // namespace
