// Documents that a worker dies of, or that fail for ever.

#include "agentfixture.h"

using sale::DocumentState;

namespace {

TEST_F(AgentTest, SettlesWhatWasBrokenOffBeforeAnythingElseAndNeverMakesItAgain)
{
    startWith({"sale:0001", "sale:0002", "sale:0003"});
    begin("sale:0001");
    worker->answer({{"state", "running"}, {"kind", "line"}});
    end("sale:0001", DocumentState::Unknown);
    open(true, {}, {"sale:0001"});
    EXPECT_EQ(changed, (QStringList{"sale:0001", "sale:0001"}));
    ASSERT_EQ(worker->at(), "make sale:0002") << "what is unknown holds nothing up";
    begin("sale:0002");
    worker->die();
    EXPECT_EQ(changed.constLast(), "sale:0002");
    pass(1000);
    worker->answer({});
    ASSERT_EQ(worker->at(), "open");
    end("sale:0002", DocumentState::NotIssued, sale::StateReason::Settled);
    // A start that fails tells what it has settled.
    changed.clear();
    worker->fail("line");
    EXPECT_EQ(changed, QStringList{"sale:0002"});
    pass(2000);
    open();
    EXPECT_EQ(worker->at(), "make sale:0003");
}

TEST_F(AgentTest, RefusesADocumentThatKillsItsWorkersBeforeItIsBegun)
{
    startAgent();
    queue("sale:0001");
    for (const int seconds : {1, 2, 4}) {
        ASSERT_EQ(worker->at(), "make sale:0001");
        worker->die();
        pass(seconds * 1000);
        worker->answer({});
        if (seconds == 4)
            queue("sale:0002");
        open();
    }
    EXPECT_EQ(worker->at(), "make sale:0002");
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::NotIssued);
    EXPECT_EQ(store.findId("sale:0001")->attempts.constLast().note.failure.value("kind"), "internal");
}

TEST_F(AgentTest, RefusesADocumentThatFailsForeverAndGoesOnWithTheNext)
{
    for (const QString reason : {"internal", "other"}) {
        startAgent();
        const QString id = "sale:" + reason;
        queue(id);
        queue("next:" + reason);
        for (const int seconds : {1, 2, 4, 8}) {
            ASSERT_EQ(worker->at(), "make " + id);
            hold(reason);
            EXPECT_EQ(text("waiting"), reason);
            pass(seconds * 1000);
            open();
        }
        // What a person puts right does not count.
        hold("paper");
        pass(16'000);
        hold(reason);
        EXPECT_EQ(worker->at(), "make next:" + reason);
        EXPECT_EQ(stateOf(id), DocumentState::NotIssued);
        const QJsonObject failure = store.findId(id)->attempts.constLast().note.failure;
        EXPECT_EQ(failure.value("kind"), reason);
        EXPECT_EQ(failure.value("text"), "of " + reason);
        issue();
    }
}

TEST_F(AgentTest, GivesUpWhatTheRegisterCanNeverBeAskedAbout)
{
    startWith({"sale:0001", "sale:0002"});
    begin("sale:0001");
    worker->answer({{"state", "running"}, {"kind", "internal"}});
    const auto fail = [this](const QString& reason, int times) {
        for (int time = 0; time < times; ++time) {
            ASSERT_EQ(worker->at(), "open");
            worker->fail(reason);
            pass(60'000);
        }
    };
    // It may be switched off and on, and no longer.
    fail("line", 4);
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::Running);
    fail("line", 1);
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::Unknown);
    // It is asked about it still, as often as it may need, and not for ever.
    fail("line", 20);
    fail("other", 9);
    EXPECT_TRUE(store.findId("sale:0001")->isToBeAsked());
    worker->die();
    EXPECT_FALSE(store.findId("sale:0001")->isToBeAsked());
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::Unknown);
    pass(60'000);
    reach();
    EXPECT_EQ(worker->at(), "make sale:0002");
}

TEST_F(AgentTest, GivesUpWhatAPausedRegisterIsNotAskedAboutAndNoPersonsWord)
{
    startWith({"sale:0001"});
    begin("sale:0001");
    worker->answer({{"state", "running"}});
    agent->pause("Петров");
    worker->fail("line");
    worker->answer({});
    ASSERT_EQ(text("state"), "paused");
    pass(299'000);
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::Running);
    changed.clear();
    pass(1'000);
    EXPECT_EQ(changed, QStringList{"sale:0001"});
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::Unknown);
    store.settle("sale:0001", 1, {.state = DocumentState::NotIssued, .by = "Anna"});
    pass(1'000'000);
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::NotIssued);
}

TEST_F(AgentTest, GivesUpNothingThatAnotherProgramIsAtStill)
{
    startWorker();
    for (int minute = 0; minute < 10; ++minute) {
        worker->fail("busy");
        pass(60'000);
    }
    // frctl has the line, and begins something; somebody's clock is of no use.
    queue("frctl:sale");
    begin("frctl:sale");
    now = now.addSecs(3600);
    queue("later:sale");
    begin("later:sale");
    now = now.addSecs(-3600);
    const auto wait = [this](int minutes) {
        for (int minute = 0; minute < minutes; ++minute) {
            worker->fail("busy");
            pass(60'000);
        }
    };
    wait(1);
    EXPECT_EQ(stateOf("later:sale"), DocumentState::Unknown);
    wait(3);
    EXPECT_EQ(stateOf("frctl:sale"), DocumentState::Running);
    wait(2);
    EXPECT_EQ(stateOf("frctl:sale"), DocumentState::Unknown);
}

TEST_F(AgentTest, CountsNoDeathAgainstWhatWasGivenToAWorkerThatHadEnded)
{
    makeAgent();
    queue("sale:0001");
    agent->start();
    for (int death = 0; death < 4; ++death) {
        worker->answer({});
        // Its last answer is read when it is gone.
        worker->hasEnded = true;
        open();
        ASSERT_EQ(worker->at(), "make sale:0001");
        worker->die();
        pass(60'000);
    }
    EXPECT_EQ(stateOf("sale:0001"), DocumentState::Queued);
}

} // namespace
