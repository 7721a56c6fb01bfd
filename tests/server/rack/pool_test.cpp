// What registers of a pool make, and what they leave to one another.

#include "rack/pooldispatch.h"
#include "rack/rack.h"
#include "scriptedworker.h"

#include "sqliteconnection.h"
#include "sqlitestore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

using namespace frserver;
using sale::DocumentState;

namespace {

/// What a register tells when it is reached.
struct Told
{
    int lastDocument = 1000;
    const char* driveUntil = "2027-01-01";
    int warnings = 0;
    QStringList taxSystems = {"osn", "patent"};
    bool isShiftOpen = true;
};

/// Two registers, whose workers and time the test works by hand.
class PoolTest : public testing::Test
{
protected:
    void make(const PoolSettings& also = {.name = "other"})
    {
        const AgentClock clock{[this] { return now; }, [this] { return steady; }};
        rack = std::make_unique<Rack>(
            registers, store,
            [this] {
                auto worker = std::make_unique<ScriptedWorker>();
                workers.append(worker.get());
                return worker;
            },
            RegisterAgent::Options{.clock = clock});
        dispatch = std::make_unique<PoolDispatch>(QList<PoolSettings>{pool, also}, *rack, store, clock);
        for (const auto& [name, agent] : rack->agents())
            agent->start();
    }

    static void open(ScriptedWorker& worker, const Told& told = {})
    {
        if (worker.at() == "start")
            worker.answer({});
        ASSERT_EQ(worker.at(), "open");
        worker.answer({{"identity", QJsonObject{{"taxSystems", QJsonArray::fromStringList(told.taxSystems)}}},
            {"shift", QJsonObject{{"open", told.isShiftOpen}}}, {"condition", conditionOf(told)}});
    }

    static QJsonObject conditionOf(const Told& told)
    {
        return {{"shiftOpen", told.isShiftOpen}, {"lastDocument", told.lastDocument},
            {"driveUntil", told.driveUntil}, {"driveWarnings", told.warnings}};
    }

    void reach(int number)
    {
        open(*workers[number]);
        settle();
    }

    void start(const Told& first = {}, const Told& second = {})
    {
        make();
        open(*workers[0], first);
        open(*workers[1], second);
    }

    void queue(const QString& id, bool isPaperless = false)
    {
        sale::DocumentRequest request{id, "sell", "{}", {}};
        request.pool = "shop";
        request.isPaperless = isPaperless;
        store.accept(request);
        run();
    }

    void startWith(const QStringList& ids)
    {
        start();
        for (const QString& id : ids)
            queue(id);
    }

    void run()
    {
        dispatch->wake();
        settle();
    }
    static void settle()
    {
        for (int round = 0; round < 5; ++round)
            QCoreApplication::processEvents();
    }

    void pass(qint64 milliseconds)
    {
        steady += milliseconds;
        now = now.addMSecs(milliseconds);
        for (const auto& [name, agent] : rack->agents())
            agent->look();
        // What a register with nothing to do is asked.
        for (ScriptedWorker* const worker : std::as_const(workers)) {
            if (worker->at() == "state")
                worker->answer({{"condition", conditionOf({})}});
        }
        run();
    }

    /// Its worker ends what it is at.
    void issue(int number)
    {
        end(number, {.state = DocumentState::Issued});
        workers[number]->answer({{"state", "issued"}});
        settle();
    }

    /// It has begun it, and met no paper.
    void missPaper(int number)
    {
        end(number, {.state = DocumentState::NotIssued, .waitsAgain = true});
        hold(number, "paper");
    }

    void end(int number, const sale::DocumentEnding& ending)
    {
        const QString id = workers[number]->last.value("id").toString();
        store.begin(id, {{{"drive", "1"}}, {}, registers[number].name});
        store.settle(id, store.findId(id)->attemptCount, ending);
    }

    void hold(int number, const QString& why)
    {
        workers[number]->answer({{"state", "queued"}, {"held", why}});
        settle();
    }

    QString at(int number) const { return workers[number]->at(); }
    QString registerOf(const QString& id) const { return store.findId(id)->request.registerName; }
    QString absent(int number) const
    {
        return dispatch->poolsOf(registers[number].name).first().toObject().value("absent").toString();
    }

    QTemporaryDir folder;
    sale::SqliteStore store{folder.filePath("journal.sqlite")};
    QList<RegisterSettings> registers{
        {.name = "till1", .cashier = "Иванова"}, {.name = "till2", .cashier = "Иванова"}};
    PoolSettings pool{.name = "shop", .registers = {"till1", "till2"}};
    QDateTime now = QDateTime(QDate(2026, 3, 2), QTime(9, 0), Qt::UTC);
    qint64 steady = 0;
    QList<ScriptedWorker*> workers;
    std::unique_ptr<Rack> rack;
    std::unique_ptr<PoolDispatch> dispatch;
};

TEST_F(PoolTest, OneThatNoRegisterMakesLetsOthersPass)
{
    start();
    queue("A");
    hold(0, "internal");
    EXPECT_EQ(at(1), "make A");
    dispatch->setAwaited("shop", "A", true);
    hold(1, "internal");
    queue("B");
    queue("C");
    pass(1000);
    for (ScriptedWorker* const worker : std::as_const(workers))
        open(*worker);
    settle();
    EXPECT_EQ(at(0), "make B");
    EXPECT_EQ(at(1), "make C");
    issue(0);
    EXPECT_EQ(registerOf("A"), "");
    pass(3000);
    EXPECT_EQ(at(0), "make A") << "tried again later";
}

TEST_F(PoolTest, TakesTheDriveThatLastsLongestFirst)
{
    // What they tell, and which of them gets the next document.
    const std::tuple<Told, Told, int> rows[] = {
        {{.lastDocument = 200'000}, {.lastDocument = 100'000}, 1},
        {{.driveUntil = "2026-04-01"}, {.lastDocument = 100'000}, 1},
        {{.lastDocument = 100'000}, {.driveUntil = "2026-04-01"}, 0},
        {{.warnings = 1}, {.driveUntil = "2026-04-01"}, 1},
        {{.warnings = 4}, {.lastDocument = 200'000}, 1},
        {{}, {}, 0},
    };
    int round = 0;
    for (const auto& [first, second, best] : rows) {
        workers.clear();
        start(first, second);
        const QString suffix = QString::number(++round);
        queue("A" + suffix);
        EXPECT_EQ(at(best), "make A" + suffix);
        EXPECT_EQ(at(1 - best), "");
        queue("B" + suffix);
        EXPECT_EQ(at(1 - best), "make B" + suffix);
        // Both are at work; whoever is ready first goes on.
        queue("C" + suffix);
        EXPECT_EQ(registerOf("C" + suffix), "");
        issue(1);
        EXPECT_EQ(at(1), "make C" + suffix);
        issue(0);
        issue(1);
    }
}

TEST_F(PoolTest, WhatOneCannotMakeAnotherOneDoes)
{
    startWith({"A", "B", "C"});
    missPaper(0);
    EXPECT_EQ(registerOf("A"), "") << "till2 is at B still";
    issue(1);
    EXPECT_EQ(at(1), "make A") << "in its place";
    EXPECT_EQ(at(0), "");
    // Tried again by and by, since nobody tells that there is paper.
    pass(1000);
    EXPECT_EQ(at(0), "make C");
    hold(0, "line");
    EXPECT_EQ(registerOf("C"), "");
    issue(1);
    EXPECT_EQ(at(1), "make C");
    // Whatever else becomes of a register that has not begun it.
    workers[1]->die();
    settle();
    pass(2000);
    reach(0);
    EXPECT_EQ(at(0), "make C");
    queue("D");
    reach(1);
    EXPECT_EQ(at(1), "make D");
    store.begin("D", {{{"drive", "1"}}, {}, "till2"});
    workers[1]->die();
    settle();
    EXPECT_EQ(registerOf("D"), "till2") << "what was begun stays";
}

TEST_F(PoolTest, WhatAWorkerPreparesForLongIsNobodyElses)
{
    startWith({"A", "B", "C"});
    // Of a run before, and nobody is at it.
    ASSERT_TRUE(store.claim({"till2", {"shop"}}));
    sale::SqliteConnection(store.fileName(), 1'000)
        .execute("UPDATE documents SET claimed = '2020-01-01T00:00:00.000Z' WHERE claimed IS NOT NULL");
    dispatch->look();
    EXPECT_EQ(registerOf("A"), "till1");
    EXPECT_EQ(registerOf("B"), "till2");
    EXPECT_EQ(registerOf("C"), "");
    workers[0]->die();
    settle();
    EXPECT_EQ(registerOf("A"), "");
    issue(1);
    EXPECT_EQ(at(1), "make A");
}

TEST_F(PoolTest, ElectronicReceiptsGoOnWithoutPaper)
{
    registers[0].isPaperless = true;
    pool.registers = {"till1"};
    start();
    queue("A");
    missPaper(0);
    queue("B", true);
    EXPECT_EQ(at(0), "make B") << "before A, and at once";
    issue(0);
    const QJsonObject view = rack->agents().at("till1")->view();
    EXPECT_EQ(view.value("waiting"), "paper") << "nothing is known of it";
    EXPECT_EQ(at(0), "");
    queue("C", true);
    missPaper(0);
    EXPECT_EQ(at(0), "") << "it wants paper for that, too";
    pass(60'000);
    EXPECT_EQ(at(0), "make A");
    issue(0);
    EXPECT_EQ(at(0), "make C");
}

TEST_F(PoolTest, LeavesAPausedAndAShutRegisterAlone)
{
    registers[0].shift = ShiftRule::Manual;
    start({.isShiftOpen = false});
    queue("A");
    EXPECT_EQ(at(1), "make A");
    queue("B");
    EXPECT_EQ(registerOf("B"), "") << "nobody has opened the shift of till1";
    rack->agents().at("till2")->pause("someone");
    issue(1);
    EXPECT_EQ(at(1), "close");
    EXPECT_EQ(registerOf("B"), "");
    // Claimed behind a document of its own, and paused then.
    workers[1]->answer({});
    rack->agents().at("till2")->resume();
    reach(1);
    EXPECT_EQ(at(1), "make B");
    rack->agents().at("till2")->stop();
    hold(1, "paper");
    EXPECT_EQ(registerOf("B"), "");
}

TEST_F(PoolTest, DriveThatEndsAndOtherTaxesKeepARegisterOut)
{
    pool.drain = {.days = 30, .documents = 5000};
    pool.taxSystems = {"osn"};
    start({.driveUntil = "2026-03-31"}, {.lastDocument = 225'001});
    EXPECT_EQ(absent(0), "driveDays");
    EXPECT_EQ(absent(1), "driveDocuments");
    queue("A");
    EXPECT_EQ(registerOf("A"), "");
    store.accept({"own", "sell", "{}", "till1"});
    rack->agents().at("till1")->wake();
    EXPECT_EQ(at(0), "make own") << "its own it makes";
    issue(0);
    workers.clear();
    start({.taxSystems = {"patent"}}, {.lastDocument = 225'000, .driveUntil = "2026-04-01"});
    EXPECT_EQ(absent(0), "taxSystems");
    EXPECT_EQ(absent(1), "");
    run();
    EXPECT_EQ(at(1), "make A");
}

TEST_F(PoolTest, AwaitedOnesGoFirstAndDeadlyOnesAreRefused)
{
    pool.registers = {"till1"};
    startWith({"A", "B", "C"});
    dispatch->setAwaited("shop", "gone", true);
    dispatch->setAwaited("shop", "C", true);
    issue(0);
    EXPECT_EQ(at(0), "make C");
    issue(0);
    for (int death = 0; death < 3; ++death) {
        ASSERT_EQ(at(0), "make B");
        workers[0]->die();
        settle();
        EXPECT_EQ(registerOf("B"), "");
        pass(60'000);
        reach(0);
    }
    EXPECT_EQ(store.findId("B")->reason, sale::StateReason::Refused);
}

} // namespace
