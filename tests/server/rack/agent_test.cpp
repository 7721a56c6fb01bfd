#include "agentfixture.h"

#include <QCoreApplication>

using sale::DocumentState;

namespace {

TEST_F(AgentTest, MakesWhatIsAwaitedFirstAndTheRestInOrder)
{
    startAgent();
    EXPECT_EQ(text("state"), "ready");
    for (const char* const id : {"sale:0001", "sale:0002", "sale:0003"})
        queue(id);
    EXPECT_EQ(worker->at(), "make sale:0001");
    EXPECT_EQ(text("state"), "making");
    agent->setAwaited("sale:0003", true);
    issue();
    EXPECT_EQ(worker->at(), "make sale:0003");
    // Withdrawn while another is made.
    store.withdraw("sale:0002");
    issue();
    EXPECT_EQ(worker->at(), "");
    EXPECT_EQ(changed, (QStringList{"sale:0001", "sale:0003"}));
    queue("sale:0004");
    store.move("sale:0004", "till2");
    issue();
    EXPECT_EQ(worker->at(), "");
}

/// What it waits for, and whether the connection stands, and the document itself is tried again.
using Obstacle = std::pair<const char*, bool>;

struct Held : AgentTest, testing::WithParamInterface<Obstacle>
{
};

TEST_P(Held, IsTriedAgainLaterAndLater)
{
    const auto& [reason, isTriedAgain] = GetParam();
    startAgent();
    queue("sale:0001");
    const QString next = isTriedAgain ? "make sale:0001" : "open";
    hold(reason);
    for (const int seconds : {1, 2, 4, 8, 16, 32, 60, 60}) {
        EXPECT_EQ(text("state"), "waiting");
        EXPECT_EQ(text("waiting"), reason);
        EXPECT_TRUE(text("waitingText").startsWith(QString("of ") + reason));
        pass(seconds * 1000 - 1);
        ASSERT_EQ(worker->at(), "") << seconds;
        pass(1);
        ASSERT_EQ(worker->at(), next);
        EXPECT_EQ(text("state"), "waiting");
        if (isTriedAgain)
            hold(reason);
        else
            worker->fail(reason);
    }
    pass(60'000);
    if (!isTriedAgain)
        open();
    issue();
    EXPECT_EQ(text("state"), "ready");
    EXPECT_TRUE(agent->view().value("waiting").isNull());
    // From the beginning.
    queue("sale:0002");
    hold(reason);
    pass(1000);
    EXPECT_EQ(worker->at(), isTriedAgain ? "make sale:0002" : "open");
}

INSTANTIATE_TEST_SUITE_P(Reasons, Held,
    testing::Values(Obstacle{"paper", true}, Obstacle{"cover", true}, Obstacle{"needsReview", true},
        Obstacle{"journal", true}, Obstacle{"line", false}, Obstacle{"busy", false},
        Obstacle{"wrongRegister", false}, Obstacle{"newDrive", false}, Obstacle{"testDrive", false}),
    [](const auto& row) { return row.param.first; });

TEST_F(AgentTest, HurriesForWhomeverWaitsForPaperButNotForALine)
{
    startAgent();
    queue("sale:0001");
    for (const int seconds : {1, 2, 4, 8}) {
        hold("paper");
        pass(seconds * 1000);
    }
    hold("paper");
    agent->setAwaited("sale:0001", true);
    pass(1999);
    EXPECT_EQ(worker->at(), "");
    pass(1);
    EXPECT_EQ(worker->at(), "make sale:0001");
    hold("line");
    agent->setAwaited("sale:0001", true);
    pass(2000);
    EXPECT_EQ(worker->at(), "");
}

TEST_F(AgentTest, KnowsOfPaperWhatItsDocumentsTell)
{
    const auto paper = [this] { return agent->view().value("condition").toObject().value("paper"); };
    startAgent();
    EXPECT_TRUE(paper().isNull());
    queue("sale:0001");
    hold("paper");
    EXPECT_EQ(paper(), false);
    pass(1000);
    issue();
    EXPECT_EQ(paper(), true);
    // Whoever has switched the register off may have taken it out.
    queue("sale:0002");
    hold("line");
    pass(1000);
    open();
    EXPECT_TRUE(paper().isNull());
    // One that it ended on is issued, and the next one waits.
    queue("sale:0003");
    changed.clear();
    begin("sale:0002");
    end("sale:0002", DocumentState::Issued);
    worker->answer({{"state", "issued"}, {"kind", "paper"}});
    EXPECT_EQ(worker->at(), "");
    EXPECT_EQ(text("waiting"), "paper");
    EXPECT_EQ(changed, QStringList{"sale:0002"});
}

TEST_F(AgentTest, IsKilledWhenItHasSaidNothingForTooLong)
{
    startAgent();
    pass(10'000'000);
    condition(true);
    EXPECT_EQ(worker->kills, 0) << "nothing was asked of it";
    queue("sale:0001");
    pass(119'000);
    worker->tick();
    pass(119'999);
    EXPECT_EQ(worker->kills, 0);
    pass(1);
    EXPECT_EQ(worker->kills, 1);
    EXPECT_EQ(text("waiting"), "worker");
    pass(999);
    EXPECT_EQ(worker->starts, 1);
    pass(1);
    EXPECT_EQ(worker->starts, 2);
    reach();
    issue();
    EXPECT_TRUE(agent->view().value("waiting").isNull());
    // Nor is it waited for at the end.
    queue("sale:0002");
    agent->stop();
    pass(120'000);
    EXPECT_EQ(worker->kills, 2);
    EXPECT_TRUE(isStopped);
    EXPECT_EQ(worker->starts, 2);
}

TEST_F(AgentTest, WantsAPersonsWordForANewDrive)
{
    startWorker();
    queue("sale:0001");
    worker->fail("newDrive");
    EXPECT_EQ(text("waiting"), "newDrive");
    agent->accept("Петров", "the drive was changed");
    ASSERT_EQ(worker->at(), "accept");
    EXPECT_EQ(worker->last.value("by"), "Петров");
    EXPECT_EQ(worker->last.value("note"), "the drive was changed");
    reach();
    EXPECT_EQ(worker->at(), "make sale:0001");
    // A word that was not taken is not given again.
    issue();
    agent->accept("Петров", "once more");
    worker->fail("line");
    pass(1000);
    EXPECT_EQ(worker->at(), "open");
}

TEST_F(AgentTest, TellsAtOnceWhatItCannotAskAbout)
{
    startAgent();
    agent->settle("sale:0001");
    EXPECT_EQ(worker->at(), "");
    QCoreApplication::processEvents();
    ASSERT_EQ(worker->at(), "settle sale:0001");
    worker->answer({});
    EXPECT_EQ(changed, QStringList{"sale:0001"});
    queue("sale:0002");
    hold("line");
    agent->settle("sale:0003");
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.constLast(), "sale:0003");
}

TEST_F(AgentTest, AsksARegisterHowItIsWhenItHasNothingToDo)
{
    startAgent();
    queue("sale:0001");
    pass(59'999);
    issue();
    EXPECT_EQ(worker->at(), "");
    pass(1);
    condition(false);
    EXPECT_FALSE(agent->view().value("shift").toObject().value("open").toBool());
    EXPECT_EQ(agent->view().value("conditionAge").toInt(), 0);
    // Told by the register itself, in its own time.
    pass(60'000);
    worker->answer({{"condition",
        QJsonObject{{"shiftOpen", false}, {"unsent", 2}, {"unsentSince", "2024-02-29T10:00:00"}}}});
    EXPECT_EQ(QDateTime::fromString(text("unsentSince"), Qt::ISODateWithMs),
        QDateTime({2024, 2, 29}, {10, 0}, agent->settings().timeZone));
    // The drive ends.
    for (const auto& [warnings, alarmed] : {std::pair(0, 0), {8, 0}, {2, 1}, {7, 3}}) {
        pass(60'000);
        worker->answer({{"condition", QJsonObject{{"shiftOpen", true}, {"driveWarnings", warnings}}}});
        EXPECT_EQ(alarms().count("drive"), alarmed) << warnings;
    }
}

TEST_F(AgentTest, KnowsSinceWhenDocumentsWaitForTheOperatorWhereTheRegisterDoesNot)
{
    const std::tuple<const char*, QJsonValue, QJsonValue, bool, bool> rows[] = {
        {"the first one", 1, 10, true, false},
        {"more", 3, 12, false, false},
        {"not told", {}, {}, false, false},
        {"another run", 3, 12, false, true},
        {"not all of those of then have gone", 5, 14, false, false},
        {"they have", 4, 14, true, false},
        {"another run", 4, 14, false, true},
        {"without a number", 4, {}, false, false},
        {"none", 0, 18, true, false},
        {"none in another run", 0, 18, true, true},
    };
    startAgent();
    QDateTime since;
    for (const auto& [name, unsent, last, isNew, isRestarted] : rows) {
        SCOPED_TRACE(name);
        if (isRestarted)
            startAgent();
        pass(60'000);
        if (isNew)
            since = unsent.toInt() > 0 ? now : QDateTime();
        ASSERT_EQ(worker->at(), "state");
        worker->answer(
            {{"condition", QJsonObject{{"shiftOpen", false}, {"unsent", unsent}, {"lastDocument", last}}}});
        EXPECT_EQ(QDateTime::fromString(text("unsentSince"), Qt::ISODateWithMs), since);
    }
}

} // namespace
