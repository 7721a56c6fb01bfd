// A journal that comes to another machine, and one that is put back.

#include "drivemark.h"
#include "journalfixture.h"
#include "movement.h"
#include "recordingdriver.h"
#include "review.h"
#include "reviewneeded.h"
#include "sqlitestore.h"

#include <QFile>

using namespace sale;

namespace {

class JournalMove : public Journal
{
protected:
    const QString exported = folder.filePath("export");
    const QString there = folder.filePath("there/sales.sqlite");
};

TEST_F(JournalMove, GoesOnThereAloneWithAllThatWaits)
{
    SqliteStore store(file);
    SqliteStore atWork(file);
    store.accept({"waits", "sell", "{}", "till1"});
    store.accept({"done", "sell", "{}", "till1"});
    store.settle(
        "done", store.begin("done", {}).value(), {.state = DocumentState::Issued, .documentNumber = 7});
    store.moveTo(exported);
    EXPECT_TRUE(store.isMoved());
    const DocumentRequest fresh{"new", "sell", "{}", "till1"};
    const std::function<void()> writings[]{
        [&] { atWork.accept(fresh); },
        [&] { atWork.begin("waits", {}); },
        [&] { atWork.withdraw("waits"); },
        [&] { atWork.acceptAndBegin(fresh, {}); },
        [&] { SqliteStore(file).accept(fresh); },
    };
    for (const auto& write : writings)
        EXPECT_TRUE(textOf(write).contains("has moved to another machine")) << qPrintable(textOf(write));
    EXPECT_EQ(atWork.findId("waits")->state, DocumentState::Queued) << "it can be read";
    EXPECT_FALSE(textOf([&] { SqliteStore(exported).begin("waits", {}); }).isEmpty())
        << "nor is it a journal";

    SqliteStore::moveIn(exported, there);
    EXPECT_EQ(QFile::permissions(there), QFile::permissions(file));
    SqliteStore moved(there);
    EXPECT_FALSE(moved.isMoved());
    EXPECT_TRUE(moved.damages().isEmpty());
    EXPECT_EQ(moved.findId("done")->documentNumber, 7U);
    EXPECT_EQ(moved.begin("waits", {}), 1);
    // An export that was lost on its way is made again.
    EXPECT_EQ(textOf([&] { store.moveTo(exported + "2"); }), QString());
}

TEST_F(JournalMove, IsRefusedAndThenNothingHasChanged)
{
    SqliteStore store(file);
    const auto isRefused = [&](const std::function<void()>& work, const char* part) {
        const QString told = textOf(work);
        EXPECT_TRUE(told.contains(part)) << qPrintable(told);
        EXPECT_FALSE(store.isMoved());
    };
    store.accept({"A", "sell", "{}", "till1"});
    const int attempt = store.begin("A", {}).value();
    isRefused([&] { store.moveTo(exported); }, "under way");
    store.settle("A", attempt, {.state = DocumentState::NotIssued});
    isRefused([&] { store.moveTo(file); }, "is there already");
    isRefused([&] { store.moveTo(folder.filePath("nowhere/export")); }, "nowhere");
    store.backUp(exported);
    isRefused([&] { SqliteStore::moveIn(exported, there); }, "was not made for a move");
    isRefused([&] { SqliteStore::moveIn(folder.filePath("none"), there); }, "is not there");
    isRefused([&] { SqliteStore::moveIn(exported, file); }, "there is a journal");
    EXPECT_FALSE(QFile::exists(there));
    store.accept({"B", "sell", "{}", "till1"});
}

TEST_F(JournalMove, OfAnOlderCopyTheRegisterKnowsMore)
{
    BasicFrSettings settings;
    RecordingDriver driver(&settings);
    const auto markAfter = [](quint32 number) {
        DriveMark mark;
        mark.drive = QStringLiteral("9999");
        mark.lastDocument = number;
        return mark;
    };
    const auto sell = [&](SqliteStore& store, const char* id, quint32 number) {
        IdentifiedSale sale(store, {QString::fromLatin1(id), "sell", "{}", "till1"});
        sale.begin(markAfter(number - 1), {}, {DocumentKind::Sale});
        sale.settle({Outcome::Issued, number}, markAfter(number));
    };
    const QString copy = folder.filePath("copy");
    {
        SqliteStore store(file);
        sell(store, "A", 8);
        store.backUp(copy);
        EXPECT_NO_THROW(requireKnown(driver, store, markAfter(8)));
        sell(store, "B", 9);
        EXPECT_NO_THROW(requireKnown(driver, store, markAfter(9)));
    }
    SqliteStore restored(copy);
    EXPECT_THROW(requireKnown(driver, restored, markAfter(9)), ReviewNeeded);
    acceptUnknown(restored, "till1", markAfter(9), "anna", "an older copy");
    EXPECT_NO_THROW(requireKnown(driver, restored, markAfter(9)));
}

} // namespace
