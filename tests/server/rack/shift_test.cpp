#include "agentfixture.h"
#include "rack/shiftwatch.h"

using frserver::ShiftRule;
using frserver::ShiftWatch;
using sale::DocumentState;

namespace {

struct ShiftCase
{
    const char* name;
    ShiftRule rule;
    const char* hours;
    /// Moscow's time; empty for a shift that is closed.
    const char* since;
    const char* now;
    bool mayOpen;
    bool isEndDue;
};

const ShiftCase shiftCases[] = {
    {"closed", ShiftRule::OnSale, "", "", "02 12:00", true, false},
    {"by hand", ShiftRule::Manual, "", "01 12:30", "02 11:59", false, false},
    {"before a register sells no more", ShiftRule::Manual, "", "01 12:30", "02 12:00", false, true},
    {"the same on sale", ShiftRule::OnSale, "", "01 12:30", "02 12:00", true, true},
    {"clock that was set back", ShiftRule::OnSale, "", "03 12:00", "02 12:00", true, false},
    {"within the hours", ShiftRule::Scheduled, "8-22", "02 08:00", "02 21:59", true, false},
    {"at their end", ShiftRule::Scheduled, "8-22", "02 08:00", "02 22:00", false, true},
    {"closed before them", ShiftRule::Scheduled, "8-22", "", "02 07:59", false, false},
    {"left open the day before", ShiftRule::Scheduled, "8-22", "01 21:00", "02 09:00", true, true},
    {"opened by hand behind them", ShiftRule::Scheduled, "8-22", "01 23:00", "02 07:00", false, false},
    {"over midnight", ShiftRule::Scheduled, "20-4", "01 20:30", "02 03:59", true, false},
    {"over midnight, at the end", ShiftRule::Scheduled, "20-4", "01 20:30", "02 04:00", false, true},
    {"all day", ShiftRule::Scheduled, "6-6", "01 06:30", "02 05:59", true, false},
    {"all day, at the end", ShiftRule::Scheduled, "6-6", "01 06:30", "02 06:00", true, true},
};

TEST(Shift, EndsInTime)
{
    const QTimeZone moscow("Europe/Moscow");
    // In March, on the days before the clocks of other places change.
    const auto moment = [&moscow](const QString& text) {
        return QDateTime({2026, 3, text.left(2).toInt()}, QTime::fromString(text.mid(3), "HH:mm"), moscow)
            .toUTC();
    };
    for (const ShiftCase& given : shiftCases) {
        SCOPED_TRACE(given.name);
        frserver::RegisterSettings settings{.timeZone = moscow, .shift = given.rule};
        const QStringList hours = QString(given.hours).split('-');
        if (given.rule == ShiftRule::Scheduled) {
            settings.shiftOpen = QTime(hours.at(0).toInt(), 0);
            settings.shiftClose = QTime(hours.at(1).toInt(), 0);
        }
        ShiftWatch watch(settings);
        if (const QString since = given.since; !since.isEmpty())
            watch.open(moment(since), moment(given.now), 0);
        EXPECT_EQ(watch.mayOpen(moment(given.now)), given.mayOpen);
        EXPECT_EQ(watch.isEndDue(moment(given.now), 0), given.isEndDue);
    }
}

TEST_F(AgentTest, AClockThatIsPutBackMakesNoShiftYounger)
{
    const QDateTime since = now.addSecs(-23 * 3600);
    startAgent(true, since);
    now = now.addSecs(-6 * 3600);
    pass(29 * 60'000);
    condition(true);
    EXPECT_EQ(worker->at(), "");
    pass(60'000);
    const QString report = worker->last.value("id").toString();
    ASSERT_EQ(worker->at(), "make " + report);
    EXPECT_EQ(store.findId(report)->request.kind, "zReport");
}

TEST_F(AgentTest, TakesAShiftForAsOldAsItCanBeKnownToBe)
{
    struct Row
    {
        const char* name;
        /// Hours ago.
        double expected;
        /// By the journal.
        double since = 0;
        bool isOpening = false;
        double closed = 0;
        /// The drive's last document.
        double seen = 0;
        /// By a run of the service before.
        double kept = 0;
        const char* drive = "9999";
    };
    const Row rows[] = {
        {"nothing is known", 0},
        {"opened by a document of ours", 3, 3, true, 0, 4, 9},
        {"its first document of ours", 3, 3},
        {"the drive's last document", 5, 3, false, 0, 5},
        {"seen before", 9, 3, false, 10, 5, 9},
        {"seen on another drive", 5, 3, false, 0, 5, 9, "9998"},
        {"seen before it was closed", 5, 0, false, 6, 5, 9},
        {"clock that was put back", 0, -1, false, 0, -2, -3},
    };
    const auto moment = [this](double hours) {
        return hours == 0 ? QJsonValue()
                          : QJsonValue(now.addSecs(qRound(-3600 * hours)).toString(Qt::ISODateWithMs));
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        kept.keep("till1", {{"drive", row.drive}, {"shiftSince", moment(row.kept)}});
        makeAgent();
        agent->start();
        worker->answer({});
        worker->answer({{"condition", QJsonObject{{"shiftOpen", true}, {"drive", "9999"}}},
            {"shift",
                QJsonObject{{"since", moment(row.since)}, {"isOpening", row.isOpening},
                    {"closed", moment(row.closed)}, {"seen", moment(row.seen)}}}});
        const QString since = agent->view().value("shift").toObject().value("since").toString();
        EXPECT_EQ(QDateTime::fromString(since, Qt::ISODateWithMs).secsTo(now), 3600 * row.expected);
        EXPECT_EQ(kept.of("till1").value("shiftSince"), since);
    }
}

TEST_F(AgentTest, ClosesAShiftThatWasSeenOpenFirstByARunBefore)
{
    startAgent();
    now = now.addSecs(23 * 3600 + 29 * 60);
    steady = 0;
    startAgent();
    EXPECT_EQ(worker->at(), "");
    pass(60'000);
    EXPECT_EQ(kind(), "zReport");
    issue();
    EXPECT_FALSE(kept.of("till1").contains("shiftSince"));
}

TEST_F(AgentTest, ClosesTheShiftBetweenDocumentsAheadOfTheQueue)
{
    startAgent(true, now.addSecs(-23 * 3600 - 29 * 60));
    queue("sale:0001");
    queue("sale:0002");
    pass(60'000);
    issue();
    const QString report = worker->last.value("id").toString();
    ASSERT_EQ(store.findId(report)->request.kind, "zReport");
    // It cannot be, and the register sells on meanwhile.
    refuse("other");
    condition(true);
    EXPECT_EQ(alarms(), QStringList{"zReport"});
    issue();
    EXPECT_EQ(worker->at(), "");
    pass(59'999);
    EXPECT_EQ(worker->at(), "");
    pass(1);
    EXPECT_EQ(worker->at(), "make " + report) << "the same one";
    issue();
    EXPECT_EQ(stateOf(report), DocumentState::Issued);
    EXPECT_EQ(alarms(), QStringList{});
    pass(60'000);
    condition(false);
    pass(3'600'000);
    EXPECT_EQ(worker->at(), "state");
}

TEST_F(AgentTest, LetsNothingGoBeforeAReportThatWaitsForPaper)
{
    startAgent(true, now.addSecs(-23 * 3600 - 29 * 60));
    queue("sale:0001");
    pass(60'000);
    issue();
    const QString report = worker->last.value("id").toString();
    hold("paper");
    queue("sale:0002");
    agent->setAwaited("sale:0002", true);
    pass(2'000);
    condition(true);
    ASSERT_EQ(worker->at(), "make " + report);
    issue();
    EXPECT_EQ(worker->at(), "make sale:0002");
}

TEST_F(AgentTest, TakesTheReportThatSomebodyHasAskedForAlready)
{
    startAgent(true, now);
    agent->pause("Петров");
    worker->answer({});
    queue("sale:0001");
    queue("z:000001", "zReport");
    pass(24 * 3'600'000);
    EXPECT_EQ(alarms(), QStringList{"shiftEnds"});
    agent->resume();
    open(true, now.addDays(-1));
    EXPECT_EQ(worker->at(), "make z:000001");
}

TEST_F(AgentTest, ClosesAShiftThatTheRegisterFindsTooOld)
{
    startAgent();
    queue("sale:0001");
    refuse("shiftExpired");
    condition(true);
    EXPECT_EQ(kind(), "zReport");
}

TEST_F(AgentTest, WaitsForTheReportWhereTheServiceMakesIt)
{
    startWith({"sale:0001", "sale:0002"});
    hold("shiftExpired");
    condition(true);
    EXPECT_EQ(text("waiting"), "shiftExpired");
    const QString report = worker->last.value("id").toString();
    ASSERT_EQ(store.findId(report)->request.kind, "zReport");
    // One try of the document for each of the report.
    refuse("other");
    condition(true);
    ASSERT_EQ(worker->at(), "make sale:0001");
    hold("shiftExpired");
    condition(true);
    pass(59'000);
    EXPECT_EQ(worker->at(), "");
    // Reached anew, by a journal that does not know how old it is.
    worker->die();
    pass(1'000);
    reach();
    ASSERT_EQ(worker->at(), "make " + report);
    issue();
    EXPECT_EQ(worker->at(), "make sale:0001");
    hold("shiftExpired");
    // Somebody was faster.
    condition(false);
    EXPECT_EQ(worker->at(), "make sale:0001");
    issue();
    EXPECT_EQ(worker->at(), "make sale:0002");
}

TEST_F(AgentTest, TellsNothingOfAShiftThatTheRegisterDoesNotTell)
{
    const auto tell = [this](const QJsonValue& isOpen) {
        pass(60'000);
        ASSERT_EQ(worker->at(), "state");
        worker->answer({{"condition", QJsonObject{{"shiftOpen", isOpen}}}});
    };
    const auto shift = [this] { return agent->view().value("shift").toObject(); };
    makeAgent();
    EXPECT_TRUE(shift().value("open").isNull());
    startAgent(true, now.addSecs(-23 * 3600));
    tell({});
    EXPECT_TRUE(shift().value("open").isNull());
    EXPECT_TRUE(shift().value("since").isNull());
    tell(true);
    EXPECT_EQ(shift().value("open"), true);
    tell({});
    // The last that was heard of it is that it was open.
    pass(30 * 60'000);
    EXPECT_EQ(kind(), "zReport");
    issue();
    EXPECT_EQ(shift().value("open"), false);
}

TEST_F(AgentTest, HasNoReportsWithoutACashier)
{
    settings.cashier.clear();
    startAgent(true, now.addDays(-1));
    EXPECT_EQ(worker->at(), "");
    EXPECT_EQ(alarms(), QStringList{"shiftEnds"});
}

TEST_F(AgentTest, OpensNoShiftOutsideItsHours)
{
    settings.shift = ShiftRule::Scheduled;
    settings.shiftOpen = QTime(13, 0);
    settings.shiftClose = QTime(14, 0);
    startAgent(false);
    queue("shift:001", "openShift");
    EXPECT_EQ(stateOf("shift:001"), DocumentState::NotIssued);
    queue("sale:0001");
    EXPECT_FALSE(worker->last.value("opensShift").toBool(true));
    refuse("shiftClosed");
    condition(false);
    pass(3600'000);
    condition(false);
    queue("sale:0001");
    EXPECT_TRUE(worker->last.value("opensShift").toBool());
    issue();
    const QJsonObject shift = agent->view().value("shift").toObject();
    EXPECT_TRUE(shift.value("open").toBool());
    EXPECT_EQ(QDateTime::fromString(shift.value("since").toString(), Qt::ISODateWithMs), now);
}

} // namespace
