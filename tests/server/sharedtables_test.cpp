// What services that share a database keep beside the journal.

#include "api/owners.h"
#include "journalerror.h"
#include "postgres/openstore.h"
#include "postgres/registerleases.h"
#include "rack/keptstates.h"
#include "sale/postgresfixture.h"
#include "webhook/outbox.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <latch>
#include <thread>
#include <vector>

using namespace frserver;

namespace {

using SharedTables = sale::Postgres;

TEST_F(SharedTables, OneServiceTellsEachEndOnceAndAllKnowTheOwners)
{
    const QString place = server.address();
    const auto store = sale::openStore(place);
    auto first = std::make_unique<Outbox>(place, 1000);
    Outbox second(place, 1000);
    // Also when both begin at once, and when a third one tells nobody.
    first->open();
    second.open();
    Outbox(place, 1000).close();
    store->accept({"document:1", "sell", "{}", "till1"});
    store->begin("document:1", {{{"drive", "9999"}, {"lastDocument", 7}}});
    store->settle("document:1", 1, {.state = sale::DocumentState::Issued, .documentNumber = 8});
    store->accept({"document:2", "sell", "{}", "till1"});
    store->withdraw("document:2");
    const QDateTime now = QDateTime::currentDateTimeUtc().addSecs(1);
    const QList<Delivery> due = first->due(now.addSecs(-120), 4);
    ASSERT_EQ(due.size(), 2) << "by a clock that is behind the database's";
    EXPECT_TRUE(second.due(now, 4).isEmpty());
    EXPECT_GT(second.nextDue(), QDateTime::currentDateTimeUtc()) << "it looks again";
    const QJsonObject told = QJsonDocument::fromJson(due.constFirst().body).object();
    EXPECT_EQ(told.value("state"), "issued");
    EXPECT_EQ(told.value("documentNumber"), 8);
    EXPECT_EQ(told.value("documentNumberRead"), true);
    EXPECT_TRUE(told.value("reason").isNull());
    const QString accepted = store->findId("document:1")->accepted.toString(Qt::ISODateWithMs);
    EXPECT_EQ(told.value("accepted"), accepted);
    first->remove(due.constFirst().number);
    first->postpone(due.constLast().number, now.addSecs(60));
    EXPECT_TRUE(first->due(now, 4).isEmpty());
    first.reset();
    // The server hears of it a moment later.
    QList<Delivery> left;
    for (QDeadlineTimer patience(20'000); left.isEmpty() && !patience.hasExpired();)
        left = second.due(now.addSecs(61), 4);
    ASSERT_EQ(left.size(), 1);
    EXPECT_EQ(left.constFirst().attempts, 1);
    EXPECT_EQ(second.dropOlderThan(now, 0), 1);
    EXPECT_EQ(second.count(), 0);
    Owners(place, 1000).claim("document:1", "shop");
    EXPECT_EQ(Owners(place, 1000).ownerOf("document:1"), "shop");
    EXPECT_FALSE(Owners(place, 1000).ownerOf("document:2"));
}

TEST_F(SharedTables, ServicesMayBeginAtOnce)
{
    const QString place = server.address();
    std::latch start(4);
    std::vector<std::jthread> services;
    for (int service = 0; service < 4; ++service) {
        services.emplace_back([&] {
            Outbox outbox(place, 5000);
            start.arrive_and_wait();
            try {
                outbox.open();
            } catch (const sale::JournalError& error) {
                ADD_FAILURE() << error.what();
            }
        });
    }
}

TEST_F(SharedTables, WhatIsKeptOfARegisterIsItsOwners)
{
    KeptStates kept(server.address(), 1000);
    sale::RegisterLeases former(server.place(), std::chrono::seconds(60));
    sale::RegisterLeases next(server.place(), std::chrono::seconds(60));
    ASSERT_TRUE(former.take({"till1"}));
    const QJsonObject lease = former.lease("till1").toJson();
    const QJsonObject paused{{"pausedBy", "Петров"}};
    kept.keep("till1", {}, lease);
    kept.keep("till1", paused, lease);
    former.release("till1");
    ASSERT_TRUE(next.take({"till1"}));
    EXPECT_THROW(kept.keep("till1", {}, lease), sale::JournalError);
    EXPECT_EQ(kept.of("till1"), paused);
    kept.keep("till1", {}, next.lease("till1").toJson());
    EXPECT_EQ(kept.of("till1"), QJsonObject());
}

} // namespace
