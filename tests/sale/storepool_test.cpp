// What every back end of the journal must do with documents that wait in pools.

#include "documentpools.h"
#include "journalerror.h"
#include "storefixture.h"

#include <map>
#include <mutex>

using namespace sale;

namespace {

class StorePool : public StoreFixture
{
protected:
    static DocumentPools& poolsOf(DocumentStore& store) { return dynamic_cast<DocumentPools&>(store); }

    void wait(const QString& id, const QString& pool = "shop", bool isPaperless = false)
    {
        DocumentRequest made = request(id);
        made.registerName.clear();
        made.pool = pool;
        made.isPaperless = isPaperless;
        EXPECT_EQ(store->accept(made).request.pool, pool);
    }

    /// The id, or nothing.
    QString claim(const PoolClaim& wanted)
    {
        const std::optional<StoredDocument> claimed = pools.claim(wanted);
        if (!claimed)
            return {};
        EXPECT_EQ(claimed->request.registerName, wanted.registerName);
        EXPECT_EQ(store->findId(claimed->request.id)->request.registerName, wanted.registerName);
        return claimed->request.id;
    }

    DocumentPools& pools = poolsOf(*store);
};

TEST_P(StorePool, RegisterGetsTheFirstOneThatItWouldMake)
{
    wait("A");
    wait("B", "chain", true);
    store->accept(request("own"));
    wait("C", "shop", true);
    wait("D", "chain");
    EXPECT_EQ(claim({"till2", {"none"}}), "");
    EXPECT_EQ(claim({"till9", {"chain"}, true, {"B", "A"}}), "") << "what it is not to have";
    EXPECT_EQ(claim({"till2", {"shop"}, true}), "C") << "it has no paper";
    EXPECT_EQ(claim({"till2", {"shop"}, true}), "");
    EXPECT_EQ(claim({"till1", {"chain", "shop"}}), "A") << "the first of all pools";
    EXPECT_EQ(claim({"till1", {"shop"}, false, {}, "D"}), "") << "of a pool that it does not serve";
    EXPECT_EQ(claim({"till1", {"chain"}, true, {}, "D"}), "");
    EXPECT_EQ(claim({"till1", {"chain"}, false, {}, "A"}), "") << "claimed";
    EXPECT_EQ(claim({"till1", {"chain"}, false, {}, "own"}), "");
    EXPECT_EQ(claim({"till1", {"chain"}, false, {}, "new"}), "");
    EXPECT_EQ(claim({"till1", {"chain"}, false, {}, "D"}), "D");
    EXPECT_EQ(claim({"till3", {"chain", "shop"}}), "B");
    EXPECT_EQ(claim({"till3", {"chain", "shop"}}), "");
    // It waits for its register as any other one of it does.
    EXPECT_EQ(
        idsOf({.states = {DocumentState::Queued}, .registerName = "till1"}), (QStringList{"A", "own", "D"}));
    EXPECT_EQ(idsOf({.pool = "chain"}), (QStringList{"B", "D"}));
}

TEST_P(StorePool, WhatIsNotBegunGoesBackToItsPlace)
{
    for (const char* const id : {"A", "B", "C", "D"})
        wait(id);
    store->accept(request("own"));
    for (const char* const id : {"A", "B", "C"})
        EXPECT_EQ(claim({"till1", {"shop"}}), id);
    store->begin("B", {markBefore, {}, "till1"});
    EXPECT_EQ(pools.giveBackStale(std::chrono::seconds(60)), QStringList());
    EXPECT_EQ(pools.giveBack("till2"), QStringList());
    EXPECT_EQ(pools.giveBack("till1"), (QStringList{"A", "C"}));
    EXPECT_THROW(store->begin("A", {markBefore, {}, "till1"}), JournalError) << "it comes too late";
    EXPECT_THROW(store->begin("A", {markBefore}), JournalError) << "nobody has it";
    EXPECT_EQ(store->findId("B")->request.registerName, "till1") << "what was begun stays";
    EXPECT_EQ(store->findId("own")->request.registerName, "till1");
    EXPECT_EQ(claim({"till2", {"shop"}}), "A");
    EXPECT_EQ(pools.giveBackStale(std::chrono::seconds(-1), {"A", "B"}), QStringList())
        << "somebody is at it";
    EXPECT_EQ(pools.giveBackStale(std::chrono::seconds(-1), {"C"}), QStringList{"A"});
    for (const char* const id : {"A", "C", "D"})
        EXPECT_EQ(claim({"till3", {"shop"}}), id);
    // It met no paper, and the register has said so.
    store->settle("B", 1, {.state = DocumentState::NotIssued, .waitsAgain = true});
    EXPECT_EQ(pools.giveBack("till1"), QStringList{"B"});
    EXPECT_EQ(claim({"till2", {"shop"}}), "B");
    EXPECT_EQ(store->begin("B", {markBefore, {}, "till2"}), 2);
}

TEST_P(StorePool, MovesBetweenRegistersAndPools)
{
    wait("A");
    store->accept(request("B"));
    EXPECT_EQ(claim({"till1", {"shop"}}), "A");
    const DocumentRequest moved = store->move("A", "till2").request;
    EXPECT_EQ(moved.registerName + moved.pool, "till2");
    EXPECT_EQ(pools.giveBack("till2"), QStringList()) << "a person has said where";
    EXPECT_EQ(pools.moveToPool("B", "shop").request.pool, "shop");
    EXPECT_EQ(pools.moveToPool("A", "shop").request.registerName, "");
    EXPECT_EQ(claim({"till3", {"shop"}}), "A");
    store->begin("A", {markBefore, {}, "till3"});
    EXPECT_EQ(pools.moveToPool("A", "chain").request.pool, "shop") << "it was begun";
    store->settle("A", 1, {.state = DocumentState::NotIssued});
    // Posted anew to another place.
    wait("A", "chain", true);
    EXPECT_EQ(claim({"till1", {"chain"}, true}), "A");
    EXPECT_EQ(claim({"till1", {"shop"}}), "B");
    EXPECT_EQ(store->withdraw("B").reason, StateReason::Deleted);
    EXPECT_EQ(pools.giveBack("till1"), QStringList{"A"});
}

TEST_P(StorePool, NothingIsBegunTwiceWhoeverClaims)
{
    constexpr int documents = 30;
    for (int number = 0; number < documents; ++number)
        wait(QString::number(number));
    std::mutex mutex;
    std::map<QString, QStringList> begun;
    std::atomic_int registers = 0;
    const auto work = [&](DocumentStore& own) {
        const QString till = QString("till%1").arg(++registers);
        int empty = 0;
        while (empty < 3) {
            const std::optional<StoredDocument> claimed = poolsOf(own).claim({till, {"shop"}});
            empty = claimed ? 0 : empty + 1;
            try {
                if (claimed && own.begin(claimed->request.id, {markBefore, {}, till})) {
                    const std::lock_guard lock(mutex);
                    begun[claimed->request.id].append(till);
                }
            } catch (const JournalError&) {
                EXPECT_TRUE(claimed) << "given back meanwhile";
            }
        }
    };
    // As whoever thinks that all others hang.
    const auto giveBack = [&](DocumentStore& own) {
        for (int round = 0; round < 40; ++round)
            poolsOf(own).giveBackStale(std::chrono::seconds(-1));
    };
    atOnce({work, giveBack, work, work, giveBack, work});
    for (const auto& [id, tills] : begun) {
        EXPECT_EQ(tills.size(), 1) << id.toStdString();
        EXPECT_EQ(store->findId(id)->request.registerName, tills.constFirst());
        EXPECT_EQ(store->findId(id)->attemptCount, 1);
    }
    // What was given back behind their last look waits still.
    pools.giveBackStale(std::chrono::seconds(-1));
    EXPECT_EQ(static_cast<int>(begun.size()) + idsOf({.states = {DocumentState::Queued}}).size(), documents);
    EXPECT_GE(begun.size(), 4U);
}

INSTANTIATE_TEST_SUITE_P(BackEnds, StorePool, testing::ValuesIn(backEnds()),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
