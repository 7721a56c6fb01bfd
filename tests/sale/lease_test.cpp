// Who owns a register, of those that share a database.

#include "journalerror.h"
#include "postgres/postgresstore.h"
#include "postgres/registerlease.h"
#include "postgresserver.h"

#include <gtest/gtest.h>

using namespace sale;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

class Lease : public testing::Test
{
protected:
    Lease() { server.clear(); }

    RegisterLease lease(seconds term = seconds(60))
    {
        return RegisterLease(server.place(), "till1", term, [this] { return now; });
    }
    /// As if the database's clock had come to its end.
    void runOut()
    {
        PostgresConnection(server.place(), 1000).execute("UPDATE leases SET until = now() - interval '1 s'");
    }

    PostgresServer& server = PostgresServer::instance();
    milliseconds now{1'000'000};
};

TEST_F(Lease, RegisterHasOneOwnerAtATime)
{
    RegisterLease first = lease();
    RegisterLease second = lease();
    RegisterLease other(server.place(), "till2", seconds(60));
    EXPECT_FALSE(first.isHeld());
    EXPECT_TRUE(first.acquire());
    EXPECT_TRUE(first.isHeld());
    EXPECT_FALSE(second.acquire());
    EXPECT_FALSE(second.renew());
    EXPECT_TRUE(other.acquire());
    first.release();
    EXPECT_FALSE(first.isHeld());
    EXPECT_TRUE(second.acquire());
    EXPECT_EQ(second.lease().epoch, first.lease().epoch + 1);
}

TEST_F(Lease, OwnerStopsAFifthBeforeTheEndCountedFromBeforeItAsked)
{
    RegisterLease owner = lease();
    ASSERT_TRUE(owner.acquire());
    now += milliseconds(47'999);
    EXPECT_TRUE(owner.isHeld());
    now += milliseconds(1);
    EXPECT_FALSE(owner.isHeld());
    EXPECT_TRUE(owner.renew());
    EXPECT_TRUE(owner.isHeld());
    // The time that the question takes is the owner's loss.
    bool isAsking = true;
    RegisterLease slow(server.place(), "till2", seconds(60), [&] {
        if (std::exchange(isAsking, false))
            return now;
        return now + milliseconds(48'000);
    });
    ASSERT_TRUE(slow.acquire());
    EXPECT_FALSE(slow.isHeld());
}

TEST_F(Lease, WhatAFormerOwnerWritesIsRefused)
{
    RegisterLease former = lease();
    RegisterLease next = lease();
    ASSERT_TRUE(former.acquire());
    PostgresStore frozen(server.place());
    frozen.writeAs(former.lease());
    const QJsonObject mark{{"drive", "9999"}, {"lastDocument", 7}};
    for (const char* const id : {"begun", "waits", "settled"})
        frozen.accept({id, "sell", "{}", "till1"});
    ASSERT_EQ(frozen.begin("begun", {mark}), 1);
    runOut();
    // Until somebody has it nobody else can have written.
    ASSERT_EQ(frozen.begin("settled", {mark}), 1);
    ASSERT_TRUE(next.acquire());
    EXPECT_FALSE(former.renew());
    EXPECT_FALSE(former.isHeld());
    EXPECT_THROW(frozen.begin("waits", {mark}), JournalError);
    EXPECT_THROW(frozen.acceptAndBegin({"new", "sell", "{}", "till1"}, {mark}), JournalError);
    EXPECT_THROW(frozen.note("begun", 1, {.failure = {{"text", "no"}}}), JournalError);
    EXPECT_THROW(
        frozen.settle("begun", 1, {.state = DocumentState::Issued, .documentNumber = 8}), JournalError);
    PostgresStore store(server.place());
    store.writeAs(next.lease());
    EXPECT_EQ(store.findId("waits")->state, DocumentState::Queued);
    EXPECT_FALSE(store.findId("new"));
    EXPECT_TRUE(store.findId("begun")->attempts.constFirst().note.failure.isEmpty());
    store.settle("begun", 1, {.state = DocumentState::Unknown});
    EXPECT_EQ(store.findId("begun")->state, DocumentState::Unknown);
}

} // namespace
