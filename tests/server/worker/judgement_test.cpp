#include "worker/clockjudgement.h"
#include "worker/drivehistory.h"
#include "worker/leaseover.h"
#include "worker/linetick.h"
#include "worker/patientstore.h"
#include "worker/registercondition.h"

#include "journalerror.h"
#include "movement.h"
#include "postgres/registerleases.h"
#include "sqlitestore.h"

#include "../../sale/hostclock.h"
#include "../../sale/recordingdriver.h"

#include <gtest/gtest.h>
#include <QTemporaryDir>

using namespace frserver;
using sale::DocumentKind;
using sale::DocumentState;

namespace {

const WorkerLease noLease([] {});

TEST(Patience, IsForTheDocumentThatTheRegisterKeptAndDidNotIssue)
{
    enum Doubt { None, MayHaveRestarted, ClosesShift };
    constexpr auto notIssued = DocumentState::NotIssued;
    const std::tuple<const char*, const char*, Doubt, DocumentState, DocumentState> rows[] = {
        {"sale:0001", "paper", None, notIssued, DocumentState::Queued},
        {"sale:0001", "cover", None, notIssued, DocumentState::Queued},
        {"sale:0001", "cash", None, notIssued, notIssued},
        {"sale:0001", "other", None, notIssued, notIssued},
        {"sale:0001", "other", MayHaveRestarted, notIssued, DocumentState::Queued},
        {"sale:0001", "cash", MayHaveRestarted, notIssued, notIssued},
        {"sale:0001", "shiftExpired", MayHaveRestarted, notIssued, notIssued},
        {"sale:0001", "shiftExpired", ClosesShift, notIssued, DocumentState::Queued},
        {"sale:0001", "paper", None, DocumentState::Issued, DocumentState::Issued},
        {"sale:0001", "paper", None, DocumentState::Unknown, DocumentState::Unknown},
        // The opening of the shift on the way to it.
        {"shift:001", "paper", None, notIssued, notIssued},
    };
    for (const auto& [id, kind, doubt, ending, state] : rows) {
        PatientStore store(":memory:", doubt == ClosesShift, noLease, "till1");
        store.setPatientFor("sale:0001", doubt == MayHaveRestarted);
        store.accept({id, "sell", {}, "till1"});
        const int attempt = store.begin(id, {}).value();
        store.note(id, attempt, {.failure = {{"kind", kind}}});
        store.note(id, attempt, {.warnings = {"sold before"}});
        store.settle(id, attempt, {.state = ending});
        EXPECT_EQ(store.findId(id)->state, state) << id << kind;
    }
    // All else is left to the journal.
    const QTemporaryDir folder;
    const QString journal = folder.filePath("journal.sqlite");
    sale::SqliteStore(journal).moveTo(folder.filePath("moved.sqlite"));
    PatientStore store(journal, false, noLease, "till1");
    EXPECT_TRUE(store.isMoved());
    EXPECT_THROW(store.requireRoom(), sale::JournalError);
}

QJsonObject leaseOf(qint64 milliseconds)
{
    return {{"owner", "me"}, {"epoch", 3},
        {"until", qint64{sale::RegisterLeases::timeSinceBoot().count() + milliseconds}}};
}

TEST(Lease, NothingIsBegunOrSentBehindItsEndUnlessItWasRenewedMeanwhile)
{
    QJsonObject news;
    WorkerLease lease([&] { lease.take(std::exchange(news, {})); });
    LineTick line([](const char*) {}, [&] { lease.require(); });
    PatientStore store(":memory:", false, lease, "till1");
    store.accept({"sale:0001", "sell", {}, "till1"});
    line.sent("without any");
    EXPECT_FALSE(lease.of("till1"));
    lease.take(leaseOf(-1));
    EXPECT_THROW(line.sent("late"), LeaseOver);
    EXPECT_THROW(line.opening(), LeaseOver);
    EXPECT_THROW(store.begin("sale:0001", {}), LeaseOver);
    EXPECT_EQ(store.findId("sale:0001")->state, DocumentState::Queued);
    news = leaseOf(1'000'000);
    line.sent("in time");
    line.opening();
    EXPECT_EQ(store.begin("sale:0001", {}), 1);
    EXPECT_EQ(lease.of("till1")->epoch, 3);
}

TEST(Clock, IsSetOnlyWhenThatCanDoNoHarm)
{
    const QDateTime now(QDate(2026, 3, 2), QTime(9, 0));
    // By how much the register is ahead, and its last document.
    const auto reading
        = [&now](int ahead, int document, bool isShiftOpen = false, bool isSynchronised = true) {
              return ClockCase{now.addSecs(ahead), now, now.addSecs(document), isShiftOpen, isSynchronised};
          };
    const std::tuple<const char*, ClockCase, bool> rows[] = {
        {"right", reading(4, -60), false},
        {"ahead", reading(300, -60), true},
        {"behind", reading(-300, -400), true},
        {"too far", reading(301, -60), false},
        {"too far behind", reading(-301, -400), false},
        {"in a shift", reading(60, -60, true), false},
        {"by a clock that nobody vouches for", reading(60, -60, false, false), false},
        {"before a document", reading(60, 1), false},
    };
    for (const auto& [name, read, maySet] : rows)
        EXPECT_EQ(mayClockBeSet(read), maySet) << name;
    EXPECT_FALSE(mayClockBeSet({{}, now, {}, false, true}));
    EXPECT_TRUE(mayClockBeSet({now.addSecs(60), now, {}, false, true}));
    // A time of the register is what its display shows, wherever the computer thinks it is.
    EXPECT_EQ(clockDifference(QDateTime(now.date(), QTime(9, 1), Qt::UTC), now), 60);
}

TEST(Condition, IsNotKnownWhereTheRegisterRefusesToTell)
{
    BasicFrSettings settings;
    RecordingDriver driver(&settings);
    const QDateTime now(QDate(2026, 3, 2), QTime(9, 0));
    const auto shift = [&](receipt::Protocol protocol) {
        return RegisterCondition::read(driver, {protocol, true}).toJson(now).value("shiftOpen");
    };
    for (const auto& [protocol, question] :
        {std::pair(receipt::Protocol::Hex, "shift"), std::pair(receipt::Protocol::Xml, "ask")}) {
        for (const bool isOpen : {true, false}) {
            driver.shiftOpen = isOpen;
            driver.unfit = "";
            EXPECT_EQ(shift(protocol), isOpen);
            driver.unfit = question;
            EXPECT_TRUE(shift(protocol).isNull());
        }
    }
}

TEST(Condition, KnowsAMomentAtWhichTheShiftWasOpen)
{
    RegisterCondition condition;
    const QDateTime now(QDate(2026, 3, 2), QTime(12, 0), QTimeZone("Asia/Vladivostok"));
    condition.drive.fnStatus.lastFdDateTime = QDateTime(QDate(2026, 3, 2), QTime(10, 0));
    EXPECT_FALSE(condition.seenOpen(now).isValid());
    condition.isShiftOpen = true;
    EXPECT_EQ(condition.seenOpen(now), now.addSecs(-2 * 3600));
    // By a clock that is an hour behind.
    condition.time = QDateTime(QDate(2026, 3, 2), QTime(11, 0));
    EXPECT_EQ(condition.seenOpen(now), now.addSecs(-3600));
    condition.drive = {};
    EXPECT_FALSE(condition.seenOpen(now).isValid());
}

class DriveHistory : public testing::Test
{
protected:
    void make(const QString& id, DocumentKind kind, const QString& drive, DocumentState state,
        const QString& name = "till1", sale::StateReason reason = {})
    {
        store.accept({id, "sell", {}, name});
        const int attempt = store.begin(id, {{{"drive", drive}}, sale::Movement{kind}.toJson()}).value();
        store.settle(id, attempt, {.state = state, .reason = reason});
    }

    QDateTime begun(const QString& id) const { return store.findId(id)->begun; }

    QTemporaryDir folder;
    sale::SqliteStore store{folder.filePath("journal.sqlite")};
};

TEST_F(DriveHistory, KnowsTheDriveOfTheRegisterThatADocumentWasMadeOn)
{
    EXPECT_EQ(lastDrive(store, "till1"), "");
    make("sale:0001", DocumentKind::Sale, "1", DocumentState::Issued);
    make("sale:0002", DocumentKind::Sale, "2", DocumentState::NotIssued, "till2");
    make("text:0003", DocumentKind::Report, "", DocumentState::Issued);
    EXPECT_EQ(lastDrive(store, "till1"), "1");
    // It comes from another register, and has not been begun on this one.
    store.accept({"sale:0002", "sell", {}, "till1"});
    EXPECT_EQ(lastDrive(store, "till1"), "1");
    store.withdraw("sale:0002");
    EXPECT_EQ(lastDrive(store, "till1"), "1");
    make("sale:0004", DocumentKind::Sale, "1 ", DocumentState::Issued);
    EXPECT_EQ(lastDrive(store, "till1"), toldDrive("1 "));
    EXPECT_EQ(toldDrive("  "), "");
}

TEST_F(DriveHistory, KnowsWhenTheShiftBegan)
{
    EXPECT_FALSE(shiftTrace(store, "1").since.isValid());
    make("sale:0001", DocumentKind::Sale, "1", DocumentState::Issued);
    EXPECT_FALSE(shiftTrace(store, "1").closed.isValid());
    make("z:000002", DocumentKind::ShiftClosing, "1", DocumentState::Issued);
    make("report:3", DocumentKind::Report, "1", DocumentState::Issued);
    EXPECT_FALSE(shiftTrace(store, "1").since.isValid());
    EXPECT_EQ(shiftTrace(store, "1").closed, begun("z:000002"));
    make("sale:0004", DocumentKind::Sale, "1", DocumentState::Issued);
    make("sale:0005", DocumentKind::Sale, "1", DocumentState::Issued);
    make("sale:0006", DocumentKind::Sale, "2", DocumentState::Issued);
    EXPECT_EQ(shiftTrace(store, "1").since, begun("sale:0004"));
    EXPECT_FALSE(shiftTrace(store, "1").isOpening);
    EXPECT_FALSE(shiftTrace(store, "").since.isValid());
    make("shift:07", DocumentKind::ShiftOpening, "1", DocumentState::Issued);
    make("sale:0008", DocumentKind::Sale, "1", DocumentState::Issued);
    make("z:000009", DocumentKind::ShiftClosing, "1", DocumentState::NotIssued);
    EXPECT_EQ(shiftTrace(store, "1").since, begun("shift:07"));
    EXPECT_TRUE(shiftTrace(store, "1").isOpening);
    // Reports are made at the register itself, so that the journal has sales alone, of years.
    make("sale:0010", DocumentKind::Sale, "1", DocumentState::Issued);
    const sale::HostClock later(2 * 86'400);
    make("sale:0011", DocumentKind::Sale, "1", DocumentState::Issued);
    make("sale:0012", DocumentKind::Sale, "1", DocumentState::Issued);
    EXPECT_EQ(shiftTrace(store, "1").since, begun("sale:0011")) << "no shift lasts longer";
}

} // namespace
