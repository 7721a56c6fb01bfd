// A register is left, for a while or for good.

#include "agentfixture.h"

#include "postgres/openstore.h"

namespace {

TEST_F(AgentTest, PausesBehindTheDocumentUnderWay)
{
    startWith({"sale:0001", "sale:0002"});
    agent->pause("Петров");
    EXPECT_EQ(text("state"), "pausing");
    issue();
    ASSERT_EQ(worker->at(), "close");
    EXPECT_EQ(text("state"), "pausing");
    worker->answer({});
    EXPECT_EQ(text("state"), "paused");
    EXPECT_EQ(text("pausedBy"), "Петров");
    pass(1'000'000);
    EXPECT_EQ(worker->at(), "");
    // Nobody wants it meanwhile.
    worker->die();
    EXPECT_EQ(text("state"), "paused");
    pass(1'000'000);
    EXPECT_EQ(worker->starts, 1);
    agent->resume();
    reach();
    EXPECT_EQ(worker->at(), "make sale:0002");
    // Behind a failure as well.
    hold("wrongRegister");
    agent->pause("Петров");
    EXPECT_EQ(worker->at(), "close");
}

TEST_F(AgentTest, StaysPausedBehindARestartOfTheService)
{
    startAgent();
    // It waits for a journal that fails, and nobody need wake it.
    const auto database = sale::openConnection(store.fileName(), 1'000);
    database->execute("ALTER TABLE documents RENAME TO away");
    agent->wake();
    EXPECT_EQ(text("waiting"), "journal");
    database->execute("ALTER TABLE away RENAME TO documents");
    pass(1'000);
    EXPECT_EQ(text("state"), "ready");
    agent->pause("Петров");
    worker->answer({});
    const QString since = text("pausedSince");
    EXPECT_EQ(QDateTime::fromString(since, Qt::ISODateWithMs), now);
    queue("sale:0001");
    pass(3'600'000);
    // Nothing is begun before it is known that nobody has paused it.
    database->execute("ALTER TABLE frserver_registers RENAME TO away");
    makeAgent();
    agent->start();
    EXPECT_EQ(text("waiting"), "journal");
    pass(60'000);
    database->execute("ALTER TABLE away RENAME TO frserver_registers");
    pass(1'000);
    EXPECT_EQ(text("state"), "paused");
    EXPECT_EQ(text("pausedBy"), "Петров");
    EXPECT_EQ(text("pausedSince"), since);
    pass(1'000'000);
    EXPECT_EQ(worker->starts, 0);
    agent->resume();
    EXPECT_EQ(worker->starts, 1);
    // So does that it was resumed, once it can be written.
    makeAgent();
    agent->start();
    EXPECT_EQ(worker->starts, 1);
}

TEST_F(AgentTest, StopsWithoutWaitingForARegisterThatDoesNotAnswer)
{
    startWorker();
    queue("sale:0001");
    ASSERT_EQ(worker->at(), "open");
    agent->stop();
    agent->stop();
    EXPECT_EQ(worker->did.mid(worker->did.indexOf("open ")), (QStringList{"open ", "end"}));
    EXPECT_FALSE(isStopped);
    worker->die();
    EXPECT_TRUE(isStopped);
    EXPECT_EQ(worker->starts, 1);
}

} // namespace
