// What becomes of a document whose owner is gone, or may be not.

#include "leasefixture.h"

#include "notresolvable.h"
#include "possiblenumber.h"

#include <functional>

using namespace sale;

namespace {

/// A document was begun, and its owner is gone or may be not.
class Fence : public Lease
{
protected:
    Fence()
    {
        former.take(till1);
        store.writeAs(former.lease("till1"));
        store.accept({"begun", "sell", "{}", "till1"});
        store.fence().takeDrive("9999");
        store.begin("begun", {{{"drive", "9999"}, {"lastDocument", 7}}});
        epoch = former.lease("till1").epoch;
        former.release("till1");
        next.take(till1);
        store.writeAs(next.lease("till1"));
    }
    DocumentState settled(DocumentState state)
    {
        store.settle("begun", 1, {.state = state, .documentNumber = 8, .waitsAgain = true});
        return store.findId("begun")->state;
    }

    RegisterLeases former = leases();
    RegisterLeases next = leases();
    PostgresStore store{server.place()};
    qint64 epoch = 0;
};

TEST_F(Fence, FormerWorkerOfThisMachineHasEndedWhenTheNextOneEnters)
{
    const Child stopped;
    const Child dead;
    const Child busy;
    stopped.stop();
    dead.die();
    for (const Child* const child : {&stopped, &dead, &busy})
        addWorker(child->identity(), epoch);
    // One that is at work is left a moment to come to its end.
    int waits = 0;
    EXPECT_TRUE(store.fence().enter([&] {
        if (++waits == 2)
            busy.die();
    }));
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(stopped.identity().fate(), ProcessIdentity::Fate::Ended);
    EXPECT_EQ(workers(), 1) << "this process alone";
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Queued);
    store.fence().leave();
    EXPECT_EQ(workers(), 0);
}

TEST_F(Fence, WhatOneHadSentThatWasKilledOrDiedMayStillComeWhereItsLineStays)
{
    using Work = std::function<void(const Child&)>;
    const auto enter = [&] { EXPECT_TRUE(store.fence().enter([] {})); };
    const Work ends[] = {
        [&](const Child& child) {
            child.stop();
            enter();
        },
        [&](const Child& child) { EXPECT_TRUE(store.fence().enter([&child] { child.die(); })); },
        [&](const Child& child) {
            child.die();
            enter();
        },
        // Killed by its own service, and nobody has looked before the register was asked.
        [](const Child& child) { child.die(); },
        [&](const Child& child) {
            child.die();
            next.tidy();
        },
    };
    for (const bool doesLineLast : {true, false}) {
        for (const Work& end : ends) {
            SCOPED_TRACE(&end - ends);
            const Child child;
            addWorker(child.identity(), epoch, doesLineLast);
            end(child);
            EXPECT_EQ(child.identity().fate(), ProcessIdentity::Fate::Ended);
            EXPECT_EQ(settled(DocumentState::NotIssued),
                doesLineLast ? DocumentState::Unknown : DocumentState::Queued);
            enter();
            next.tidy();
            EXPECT_EQ(settled(DocumentState::NotIssued),
                doesLineLast ? DocumentState::Unknown : DocumentState::Queued);
            // The network has given up.
            connection.execute(
                "UPDATE workers SET killed = now() - interval '1 hour' WHERE killed IS NOT NULL");
            EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Queued);
            store.fence().leave();
            next.tidy();
            EXPECT_EQ(workers(), 0);
        }
    }
}

TEST_F(Fence, WhoHasEndedIsNoDoubtOfWhatIsBegunLater)
{
    const Child child;
    addWorker(child.identity(), epoch, true);
    child.die();
    EXPECT_TRUE(store.fence().enter([] {}));
    store.accept({"later", "sell", "{}", "till1"});
    store.begin("later", {});
    connection.execute("UPDATE attempts SET epoch = ?", {epoch});
    connection.execute("UPDATE documents SET begun = begun + interval '1 second' WHERE id = 'later'");
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Unknown);
    store.settle("later", 1, {.state = DocumentState::NotIssued});
    EXPECT_EQ(store.findId("later")->state, DocumentState::NotIssued);
}

TEST_F(Fence, NumberThatTheDriveReachesWhileSomethingMayComeIsPossible)
{
    const std::tuple<bool, const char*, bool> rows[]
        = {{true, "1 hour", true}, {false, "19 minutes", true}, {false, "21 minutes", false}};
    addWorker(elsewhere(), epoch);
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Unknown);
    store.accept({"later", "sell", "{}", "till1"});
    store.fence().takeDrive("9999");
    store.begin("later", {{{"drive", "9999"}, {"lastDocument", 12}}});
    for (const auto& [isAnybodyLeft, span, isPossible] : rows) {
        if (!isAnybodyLeft)
            connection.execute("DELETE FROM workers");
        connection.execute("UPDATE documents SET begun = clock_timestamp() + ?::interval WHERE id = 'later'",
            {QString(span)});
        const auto judge = [&] { requirePossibleNumber(store, store.findId("begun").value(), 13); };
        if (isPossible) {
            EXPECT_NO_THROW(judge()) << span;
        } else {
            EXPECT_THROW(judge(), NotResolvable) << span;
        }
    }
}

TEST_F(Fence, DocumentThatAnotherMachineMayStillSendIsUnknownAndNeverNotIssued)
{
    addWorker(elsewhere(), epoch);
    EXPECT_TRUE(store.fence().enter([] {}));
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Unknown);
    // Also for programs that own nothing.
    PostgresStore other(server.place());
    other.settle("begun", 1, {.state = DocumentState::NotIssued});
    EXPECT_EQ(store.findId("begun")->state, DocumentState::Unknown);
    // A person has looked.
    const DocumentEnding said{.state = DocumentState::NotIssued, .by = "Петров"};
    store.settle("begun", 1, said);
    EXPECT_EQ(store.findId("begun")->state, DocumentState::NotIssued);
}

TEST_F(Fence, WorkerOfAnotherOwnerThanTheDocumentsIsNotInItsWay)
{
    addWorker(elsewhere(), epoch - 1);
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Queued);
}

TEST_F(Fence, WhatTheRegisterHasIsIssuedWhoeverMaySendItStill)
{
    addWorker(elsewhere(), epoch);
    EXPECT_EQ(settled(DocumentState::Issued), DocumentState::Issued);
}

TEST_F(Fence, RegisterThatHasDroppedTheFormerLineIsAlone)
{
    addWorker(elsewhere(), epoch);
    EXPECT_TRUE(store.fence().enter([] {}));
    EXPECT_EQ(workers(), 2);
    store.fence().hasLineAlone();
    EXPECT_EQ(workers(), 1);
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Queued);
}

} // namespace
