// A register that several services have in their configuration.

#include "agentfixture.h"
#include "postgres/openstore.h"
#include "rack/ownership.h"

#include <QCoreApplication>

using sale::DocumentState;

namespace {

/// Leases that a test gives and takes by hand.
class HandOwnership : public frserver::Ownership
{
public:
    void look() override { }
    bool isHeld(const QString& /*registerName*/) const override { return epoch > 0; }
    QJsonObject lease(const QString& /*registerName*/) const override
    {
        return {{"epoch", epoch}, {"until", until}};
    }
    QJsonObject owner(const QString& /*registerName*/) const override { return {{"host", "shop2"}}; }
    std::optional<frserver::Waiting> obstacle(const QString& /*registerName*/) const override
    {
        return waiting;
    }
    bool giveWay(const QString& /*registerName*/) override
    {
        ++asked;
        epoch = isWanted ? 0 : epoch;
        return isWanted;
    }
    bool leaveDrive(const QString& /*registerName*/) override
    {
        left += canBeLeft ? 1 : 0;
        return canBeLeft;
    }
    void release(const QString& /*registerName*/) override { isReleased = true; }
    void acceptMoved(const QString& /*registerName*/) override { epoch = 1; }

    /// 0 while somebody else has it.
    qint64 epoch = 1;
    qint64 until = 1000;
    std::optional<frserver::Waiting> waiting;
    /// Another one would work it.
    bool isWanted = false;
    int asked = 0;
    bool canBeLeft = true;
    int left = 0;
    bool isReleased = false;
};

class OwnedTest : public AgentTest
{
protected:
    OwnedTest() { ownership = hand; }

    void lose()
    {
        hand->epoch = 0;
        agent->look();
    }

    std::shared_ptr<HandOwnership> hand = std::make_shared<HandOwnership>();
};

TEST_F(OwnedTest, StandsByUntilTheRegisterIsItsOwn)
{
    hand->epoch = 0;
    makeAgent();
    agent->start();
    queue("sale:0000");
    begin("sale:0000");
    queue("sale:0001");
    pass(1'000'000);
    EXPECT_EQ(stateOf("sale:0000"), DocumentState::Running) << "whoever has it knows better";
    EXPECT_EQ(worker->starts, 0);
    EXPECT_EQ(text("state"), "standby");
    EXPECT_EQ(agent->view().value("owner").toObject().value("host"), "shop2");
    // What nobody can ask about now is told at once.
    agent->settle("sale:0001");
    QCoreApplication::processEvents();
    EXPECT_EQ(changed, QStringList{"sale:0001"});
    hand->epoch = 7;
    agent->look();
    EXPECT_EQ(stateOf("sale:0000"), DocumentState::Running) << "it is asked first";
    end("sale:0000", DocumentState::Issued);
    reach();
    EXPECT_EQ(worker->last.value("lease").toObject().value("epoch"), 7);
    issue();
    EXPECT_EQ(text("state"), "ready");
}

TEST_F(OwnedTest, WorkerIsKilledWhenTheLeaseIsOverWhateverItIsAt)
{
    startAgent();
    queue("sale:0001");
    ASSERT_EQ(worker->at(), "make sale:0001");
    lose();
    EXPECT_EQ(worker->kills, 1);
    EXPECT_EQ(text("state"), "standby");
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::Queued);
    pass(1'000'000);
    EXPECT_EQ(worker->starts, 1);
    // It is no fault of the document, however often that happens.
    for (int time = 0; time < 4; ++time) {
        hand->epoch = 2 + time;
        agent->look();
        reach();
        ASSERT_EQ(worker->at(), "make sale:0001");
        lose();
    }
    // One with nothing to do as well.
    hand->epoch = 9;
    agent->look();
    reach();
    issue();
    lose();
    EXPECT_FALSE(worker->isAlive);
}

TEST_F(OwnedTest, WorkerOfAFormerLeaseIsNotUsedForTheNextOne)
{
    const std::tuple<const char*, bool, void (frserver::RegisterAgent::*)()> rows[] = {
        {"sale:0001", true, &frserver::RegisterAgent::look},
        {"sale:0002", false, &frserver::RegisterAgent::look},
        // Before anybody has looked.
        {"sale:0003", false, &frserver::RegisterAgent::wake},
    };
    startAgent();
    for (const auto& [id, isMaking, next] : rows) {
        SCOPED_TRACE(id);
        const int starts = worker->starts;
        queue(id);
        if (!isMaking)
            issue();
        // Another one's in between, between two looks.
        ++hand->epoch;
        EXPECT_EQ(agent->readiness(), frserver::RegisterAgent::Readiness::Nothing);
        ((*agent).*next)();
        EXPECT_EQ(worker->starts, starts + 1);
        reach();
        EXPECT_EQ(worker->last.value("lease").toObject().value("epoch"), hand->epoch);
        if (isMaking)
            issue();
    }
}

TEST_F(OwnedTest, WorkerHearsOfEachRenewalOnce)
{
    startAgent();
    agent->look();
    EXPECT_TRUE(worker->leases.isEmpty()) << "it is at nothing";
    queue("sale:0001");
    EXPECT_EQ(worker->last.value("lease").toObject().value("until"), 1000);
    agent->look();
    hand->until = 2000;
    agent->look();
    agent->look();
    ASSERT_EQ(worker->leases.size(), 1);
    EXPECT_EQ(worker->leases.constFirst().value("until"), 2000);
    issue();
}

TEST_F(OwnedTest, WhatKeepsItFromItsRegisterIsToldAndAPersonMayAnswer)
{
    hand->epoch = 0;
    makeAgent();
    agent->start();
    agent->accept("Петров", "nobody asked");
    EXPECT_EQ(worker->starts, 0);
    hand->waiting = frserver::Waiting{"otherMachine", "of shop2"};
    agent->look();
    EXPECT_EQ(text("state"), "waiting");
    EXPECT_EQ(text("waiting"), "otherMachine");
    agent->accept("Петров", "moved");
    ASSERT_EQ(worker->starts, 1);
    worker->answer({});
    // The drive is another question.
    EXPECT_EQ(worker->at(), "open");
    open();
    EXPECT_EQ(text("state"), "ready");
}

TEST_F(OwnedTest, LineThatLeadsToAnotherRegisterIsLeftToWhoeverMayReachItsOwn)
{
    // Whose document it is that was begun.
    enum Begun { Nobodys, Formers, Own };
    const std::tuple<const char*, bool, Begun, int> rows[] = {
        {"wrongRegister", true, Nobodys, 1},
        {"newDrive", true, Formers, 1},
        {"testDrive", true, Nobodys, 1},
        // Alone it goes on, and looks again each minute.
        {"newDrive", false, Nobodys, 3},
        {"newDrive", true, Own, 0},
        // The register may be off for all of them.
        {"line", true, Nobodys, 0},
        {"busy", true, Nobodys, 0},
    };
    int round = 0;
    for (const auto& [waiting, isWanted, begun, asked] : rows) {
        SCOPED_TRACE(waiting);
        hand->epoch = 1;
        hand->asked = 0;
        hand->isWanted = isWanted;
        const QString id = QString("sale:%1").arg(++round);
        if (begun == Formers) {
            store.accept({id, "sell", "{}", "till1"});
            begin(id);
        }
        startWorker();
        if (begun == Own) {
            open();
            queue(id);
            begin(id);
            worker->answer({{"state", "running"}, {"kind", "line"}});
        }
        for (int second = 0; second < 185; ++second) {
            if (worker->at() == "open")
                worker->fail(waiting);
            if (second == 59) {
                EXPECT_EQ(hand->asked, 0) << "somebody may put it right";
            }
            if (worker->did.endsWith("end") && worker->isAlive)
                worker->die();
            pass(1'000);
        }
        EXPECT_EQ(hand->asked, asked);
        EXPECT_EQ(text("state"), asked == 1 ? "standby" : "waiting");
        EXPECT_EQ(worker->kills, 0);
        if (begun != Nobodys)
            end(id, DocumentState::Issued);
    }
}

TEST_F(OwnedTest, PausedLeavesWhatADeadWorkerHeld)
{
    startAgent();
    worker->die();
    agent->pause("Петров");
    pass(1'000);
    EXPECT_EQ(hand->left, 1);
    agent->resume();
    reach();
    agent->pause("Петров");
    ASSERT_EQ(worker->at(), "close");
    worker->answer({});
    EXPECT_EQ(hand->left, 1) << "the worker has done so itself";
    // Or has not, since the journal could not be used for a while.
    agent->resume();
    open();
    agent->pause("Петров");
    hand->canBeLeft = false;
    worker->answer({{"left", false}});
    hand->canBeLeft = true;
    EXPECT_EQ(hand->left, 1);
    pass(10'000);
    EXPECT_EQ(hand->left, 2);
}

TEST_F(OwnedTest, ResumedWhileNothingCanBeKeptItIsNotPausedAnewBehindALostLease)
{
    startAgent();
    agent->pause("Петров");
    worker->answer({});
    const auto database = sale::openConnection(store.fileName(), 1'000);
    const auto changeOwner = [&](int others) {
        const qint64 former = hand->epoch;
        lose();
        database->execute("ALTER TABLE away RENAME TO frserver_registers");
        hand->epoch = former + others + 1;
        pass(1'000);
        database->execute("ALTER TABLE frserver_registers RENAME TO away");
    };
    database->execute("ALTER TABLE frserver_registers RENAME TO away");
    agent->resume();
    changeOwner(0);
    EXPECT_EQ(text("state"), "starting");
    // One that came behind that is another one.
    agent->pause("Анна");
    changeOwner(0);
    EXPECT_EQ(text("pausedBy"), "Анна");
    agent->resume();
    agent->pause("Борис");
    changeOwner(0);
    EXPECT_EQ(text("pausedBy"), "Борис");
    // Others who had it in between have told that it is.
    agent->resume();
    changeOwner(1);
    EXPECT_EQ(text("pausedBy"), "Борис");
}

TEST_F(OwnedTest, StopsBehindTheDocumentUnderWayAndReleasesTheRegisterWhenItsWorkerHasEnded)
{
    startWith({"sale:0001", "sale:0002"});
    agent->stop();
    issue();
    EXPECT_EQ(worker->at(), "close");
    worker->answer({});
    EXPECT_EQ(worker->did.constLast(), "end");
    EXPECT_FALSE(isStopped || hand->isReleased);
    worker->die();
    EXPECT_TRUE(isStopped && hand->isReleased);
    EXPECT_EQ(text("state"), "stopped");
    EXPECT_EQ(stateOf("sale:0002"), DocumentState::Queued);
    // Also while somebody else has it.
    isStopped = false;
    startAgent();
    lose();
    agent->stop();
    EXPECT_TRUE(isStopped);
}

} // namespace
