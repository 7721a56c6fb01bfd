// Who owns a register, of those that share a database.

#include "leasefixture.h"

#include "notresolvable.h"
#include "possiblenumber.h"

using namespace sale;

namespace {

TEST_F(Lease, RegisterHasOneOwnerAtATime)
{
    RegisterLeases first = leases();
    RegisterLeases second = leases();
    EXPECT_FALSE(first.isHeld("till1"));
    EXPECT_TRUE(first.take(till1));
    EXPECT_TRUE(first.isHeld("till1"));
    EXPECT_FALSE(second.take(till1));
    EXPECT_TRUE(second.take({"till2"}));
    const auto standings = second.standings({till1, {"till2"}, {"till3"}});
    EXPECT_EQ(standings["till1"].kind, RegisterLeases::Standing::Owned);
    EXPECT_EQ(standings["till1"].process, ::getpid());
    EXPECT_EQ(standings["till2"].kind, RegisterLeases::Standing::Free);
    EXPECT_EQ(standings["till3"].kind, RegisterLeases::Standing::Free);
    first.release("till1");
    EXPECT_FALSE(first.isHeld("till1"));
    EXPECT_TRUE(second.take(till1));
    EXPECT_EQ(second.lease("till1").epoch, 2);
    // What the former one did last comes to nothing.
    first.release("till1");
    first.renew();
    EXPECT_FALSE(first.isHeld("till1"));
    EXPECT_FALSE(first.take(till1));
}

TEST_F(Lease, OwnerStopsAFifthBeforeTheEndCountedFromBeforeItAsked)
{
    RegisterLeases owner = leases();
    ASSERT_TRUE(owner.take(till1));
    ASSERT_TRUE(owner.take({"till2"}));
    now += milliseconds(47'999);
    EXPECT_TRUE(owner.isHeld("till1"));
    now += milliseconds(1);
    EXPECT_FALSE(owner.isHeld("till1"));
    owner.renew();
    EXPECT_TRUE(owner.isHeld("till1"));
    EXPECT_TRUE(owner.isHeld("till2"));
    // The time that the question takes is the owner's loss.
    bool isAsking = true;
    RegisterLeases slow(server.place(), seconds(60),
        [&] { return std::exchange(isAsking, false) ? now : now + milliseconds(48'000); });
    ASSERT_TRUE(slow.take({"till3"}));
    EXPECT_FALSE(slow.isHeld("till3"));
}

TEST_F(Lease, WhoCannotWorkARegisterGivesWayToWhoWouldAsWell)
{
    RegisterLeases owner = leases();
    RegisterLeases other = leases();
    ASSERT_TRUE(owner.take(till1));
    owner.want({"till1", "till2"});
    other.want({"till2"});
    EXPECT_FALSE(owner.giveWay("till1")) << "alone";
    EXPECT_TRUE(owner.isHeld("till1"));
    other.want({"till1", "till2"});
    ASSERT_TRUE(owner.giveWay("till1"));
    EXPECT_FALSE(owner.isHeld("till1"));
    now += seconds(9);
    EXPECT_FALSE(owner.take(till1)) << "the other one has not looked yet";
    ASSERT_TRUE(other.take(till1));
    ASSERT_TRUE(other.giveWay("till1"));
    now += seconds(2);
    EXPECT_TRUE(owner.take(till1));
    other.release("till1");
    EXPECT_FALSE(owner.giveWay("till1"));
    other.want({"till1"});
    connection.execute("UPDATE candidates SET seen = now() - interval '1 hour'");
    EXPECT_FALSE(owner.giveWay("till1")) << "it has died";
    owner.tidy();
    EXPECT_EQ(connection.value("SELECT count(*) FROM candidates"), 0);
}

TEST_F(Lease, OwnerThatIsGoneIsNotWaitedForAndOneThatIsStoppedIs)
{
    RegisterLeases former = leases();
    RegisterLeases next = leases();
    ASSERT_TRUE(former.take(till1));
    const Child child;
    ownedBy(child.identity());
    child.stop();
    EXPECT_FALSE(next.take(till1));
    child.die();
    EXPECT_TRUE(next.take(till1));
    // Another process has its number, or the machine was started anew.
    ProcessIdentity later = ProcessIdentity::own();
    ++later.started;
    ownedBy(later);
    EXPECT_TRUE(former.take(till1));
    ProcessIdentity before = ProcessIdentity::own();
    before.space = "boot/pid:[4026531836]";
    if (ProcessIdentity::own().space.endsWith("/pid:[4026531836]")) {
        ownedBy(before);
        EXPECT_TRUE(next.take(till1));
    }
    // A container of this machine, and another machine: who knows.
    before.space = "boot/pid:[7]";
    for (const ProcessIdentity& unseen : {before, elsewhere()}) {
        ownedBy(unseen);
        EXPECT_FALSE(former.take(till1));
    }
}

TEST_F(Lease, LineOfAnotherMachineIsTakenWhenSomebodySaysThatItWasMoved)
{
    RegisterLeases leases = this->leases();
    RegisterLeases::Wish wish{"till1", true};
    ASSERT_TRUE(leases.take(wish));
    ownedBy(elsewhere());
    addWorker(elsewhere(), 1);
    connection.execute("UPDATE leases SET owner = 'other'");
    wish.isMovedHere = true;
    EXPECT_FALSE(leases.take(wish)) << "it is at work there";
    runOut();
    for (const bool isBound : {true, false}) {
        const RegisterLeases::Wish other{"till1", isBound};
        EXPECT_FALSE(leases.take(other));
        EXPECT_EQ(leases.standings({other})["till1"].kind, RegisterLeases::Standing::OtherMachine);
    }
    EXPECT_TRUE(leases.take(wish));
    EXPECT_EQ(workers(), 0);
}

TEST_F(Lease, WhatAFormerOwnerWritesIsRefused)
{
    RegisterLeases former = leases();
    RegisterLeases next = leases();
    ASSERT_TRUE(former.take(till1));
    PostgresStore frozen(server.place());
    frozen.writeAs(former.lease("till1"));
    const QJsonObject mark{{"drive", "9999"}, {"lastDocument", 7}};
    for (const char* const id : {"begun", "waits", "settled"})
        frozen.accept({id, "sell", "{}", "till1"});
    frozen.fence().takeDrive("9999");
    ASSERT_EQ(frozen.begin("begun", {mark}), 1);
    runOut();
    // Until somebody has it nobody else can have written.
    ASSERT_EQ(frozen.begin("settled", {mark}), 1);
    ASSERT_TRUE(next.take(till1));
    former.renew();
    EXPECT_FALSE(former.isHeld("till1"));
    EXPECT_THROW(frozen.begin("waits", {mark}), JournalError);
    EXPECT_THROW(frozen.acceptAndBegin({"new", "sell", "{}", "till1"}, {mark}), JournalError);
    EXPECT_THROW(frozen.note("begun", 1, {.failure = {{"text", "no"}}}), JournalError);
    EXPECT_THROW(
        frozen.settle("begun", 1, {.state = DocumentState::Issued, .documentNumber = 8}), JournalError);
    EXPECT_THROW(frozen.fence().enter([] {}), JournalError);
    PostgresStore store(server.place());
    store.writeAs(next.lease("till1"));
    EXPECT_EQ(store.findId("waits")->state, DocumentState::Queued);
    EXPECT_FALSE(store.findId("new"));
    EXPECT_TRUE(store.findId("begun")->attempts.constFirst().note.failure.isEmpty());
    store.settle("begun", 1, {.state = DocumentState::Unknown});
    EXPECT_EQ(store.findId("begun")->state, DocumentState::Unknown);
}

TEST_F(Lease, OwnerThatIsStoppedInTheMiddleOfAWriteHoldsUpNoRenewal)
{
    RegisterLeases owner = leases();
    ASSERT_TRUE(owner.take(till1));
    connection.together([&] {
        requireOwner(connection, owner.lease("till1"));
        owner.renew();
        EXPECT_TRUE(owner.isHeld("till1"));
        // Whoever comes behind it waits for its end, and asks again.
        RegisterLeases next = leases();
        PostgresConnection(server.place(), 1000).execute("UPDATE leases SET until = '-infinity'");
        EXPECT_FALSE(next.take(till1));
    });
}

TEST_F(Lease, ProgramThatOwnsNothingIsInTheWayOfNobodyAndIsRemembered)
{
    {
        PostgresStore person(server.place());
        EXPECT_EQ(person.acceptAndBegin({"begun", "sell", "{}", "till1"}, {}), 1);
        EXPECT_EQ(workers(), 1);
        connection.execute("UPDATE workers SET machine = 'other'");
        PostgresStore store(server.place());
        store.settle("begun", 1, {.state = DocumentState::NotIssued});
        EXPECT_EQ(store.findId("begun")->state, DocumentState::Unknown);
        connection.execute("UPDATE workers SET machine = ?", {ProcessIdentity::own().machine});
    }
    EXPECT_EQ(workers(), 0);
    // One that is stopped at this machine has the port, and is left alone.
    const Child child;
    child.stop();
    addWorker(child.identity(), 0);
    RegisterLeases owner = leases();
    ASSERT_TRUE(owner.take(till1));
    PostgresStore store(server.place());
    store.writeAs(owner.lease("till1"));
    EXPECT_TRUE(store.fence().enter([] {}));
    EXPECT_EQ(child.identity().fate(), ProcessIdentity::Fate::Alive);
    ownedBy(elsewhere());
    connection.execute("UPDATE leases SET host = 'shop2'");
    PostgresStore person(server.place());
    EXPECT_THROW(person.acceptAndBegin({"other", "sell", "{}", "till1"}, {}), JournalError);
}

TEST_F(Lease, WhatAKilledProgramHasSentMayStillComeWhereItsLineLasts)
{
    for (const bool doesLineLast : {true, false}) {
        SCOPED_TRACE(doesLineLast);
        server.clear();
        PostgresStore person(server.place());
        person.requireFreeLine({}, doesLineLast);
        person.acceptAndBegin({"begun", "sell", "{}", "till1"}, {});
        const Child child;
        child.die();
        connection.execute("UPDATE workers SET process = ?, started = ?",
            {child.identity().process, child.identity().started});
        PostgresStore next(server.place());
        next.requireFreeLine({}, doesLineLast);
        // Other machines are told by whatever comes next on this one, at whichever register.
        next.meetRegister("till2", [] { return QString(); });
        EXPECT_EQ(connection.value("SELECT count(*) FROM workers WHERE register = 'till1' AND killed IS NULL")
                      .toInt(),
            0);
        next.settle("begun", 1, {.state = DocumentState::NotIssued});
        EXPECT_EQ(
            next.findId("begun")->state, doesLineLast ? DocumentState::Unknown : DocumentState::NotIssued);
        // It is no doubt of what others begin.
        next.acceptAndBegin({"later", "sell", "{}", "till1"}, {});
        connection.execute("UPDATE documents SET begun = begun + interval '1 second' WHERE id = 'later'");
        next.settle("later", 1, {.state = DocumentState::NotIssued});
        EXPECT_EQ(next.findId("later")->state, DocumentState::NotIssued);
    }
}

TEST_F(Lease, WhatWasClaimedIsGivenBackByWhoeverOwnsTheRegister)
{
    RegisterLeases former = leases();
    RegisterLeases next = leases();
    ASSERT_TRUE(former.take(till1));
    PostgresStore store(server.place());
    DocumentRequest waiting{"A", "sell", "{}", {}};
    waiting.pool = "shop";
    store.accept(waiting);
    const auto claim = [&] { ASSERT_TRUE(store.claim({"till1", {"shop"}})); };
    const auto giveBackStale = [&](const RegisterLeases& service, const QStringList& underWay = {}) {
        return store.giveBackStale(seconds(-1), underWay, service.lease("till1").owner);
    };
    claim();
    EXPECT_EQ(giveBackStale(next), QStringList()) << "its owner is there";
    EXPECT_EQ(giveBackStale(former, {"A"}), QStringList()) << "and prepares it";
    EXPECT_EQ(giveBackStale(former), QStringList{"A"});
    claim();
    runOut();
    EXPECT_EQ(giveBackStale(next), QStringList{"A"});
    claim();
    const QJsonObject frozen = former.lease("till1").toJson();
    ASSERT_TRUE(next.take(till1));
    // It is the next one's, which may be about to begin it.
    EXPECT_THROW(store.giveBack("till1", frozen), JournalError);
    EXPECT_EQ(giveBackStale(former), QStringList());
    EXPECT_EQ(store.findId("A")->request.registerName, "till1");
    EXPECT_EQ(store.giveBack("till1", next.lease("till1").toJson()), QStringList{"A"});
}

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
    stopped.stop();
    dead.die();
    addWorker(stopped.identity(), epoch);
    addWorker(dead.identity(), epoch);
    EXPECT_TRUE(store.fence().enter([] {}));
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
    const struct
    {
        bool isAnybodyLeft;
        const char* later;
        bool isPossible;
    } rows[] = {{true, "1 hour", true}, {false, "19 minutes", true}, {false, "21 minutes", false}};
    addWorker(elsewhere(), epoch);
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Unknown);
    store.accept({"later", "sell", "{}", "till1"});
    store.fence().takeDrive("9999");
    store.begin("later", {{{"drive", "9999"}, {"lastDocument", 12}}});
    for (const auto& row : rows) {
        if (!row.isAnybodyLeft)
            connection.execute("DELETE FROM workers");
        connection.execute("UPDATE documents SET begun = clock_timestamp() + ?::interval WHERE id = 'later'",
            {QString(row.later)});
        const auto judge = [&] { requirePossibleNumber(store, store.findId("begun").value(), 13); };
        if (row.isPossible) {
            EXPECT_NO_THROW(judge()) << row.later;
        } else {
            EXPECT_THROW(judge(), NotResolvable) << row.later;
        }
    }
}

TEST_F(Fence, OneThatIsAtWorkIsLeftAMomentToComeToItsEnd)
{
    const Child busy;
    addWorker(busy.identity(), epoch);
    int waits = 0;
    EXPECT_TRUE(store.fence().enter([&] {
        if (++waits == 2)
            busy.die();
    }));
    EXPECT_EQ(waits, 2);
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

TEST_F(Fence, WhatTheRegisterHasIsIssuedWhoeverMaySendItStill)
{
    addWorker(elsewhere(), epoch);
    EXPECT_EQ(settled(DocumentState::Issued), DocumentState::Issued);
}

TEST_F(Fence, WorkerOfAnotherOwnerThanTheDocumentsIsNotInItsWay)
{
    addWorker(elsewhere(), epoch - 1);
    EXPECT_EQ(settled(DocumentState::NotIssued), DocumentState::Queued);
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
