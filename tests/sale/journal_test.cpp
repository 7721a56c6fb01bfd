#include "idconflict.h"
#include "identifiedsale.h"
#include "journalerror.h"
#include "recordingdriver.h"
#include "salejournal.h"
#include "settlement.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace sale;

namespace {

const DriveMark noted{QStringLiteral("9999"), 7};

class Journal : public testing::Test
{
protected:
    static IdentifiedSale saleIn(
        SaleJournal& journal, const QByteArray& receipt = R"({"a": 1, "b": 2})", const char* id = "A")
    {
        return {journal, QString::fromLatin1(id), receipt};
    }

    QTemporaryDir folder;
    /// Its folder is not there yet.
    const QString file = folder.filePath(QStringLiteral("data/sales.sqlite"));
};

TEST_F(Journal, SaleIsDoneOnce)
{
    SaleJournal journal(file);
    IdentifiedSale sale = saleIn(journal);
    EXPECT_EQ(sale.record().verdict, Outcome::NotIssued);
    sale.begin(noted);
    EXPECT_EQ(sale.record().verdict, Outcome::None);
    EXPECT_THROW(sale.begin(noted), JournalError);
    sale.settle(Outcome::NotIssued);
    sale.begin(noted);
    sale.settle({Outcome::Issued, 8});
    EXPECT_THROW(sale.begin(noted), JournalError);
    EXPECT_THROW(saleIn(journal, R"({"a": 1, "b": 3})"), IdConflict);
    EXPECT_EQ(saleIn(journal, R"({"a": 1, "b": 3})", "B").record().verdict, Outcome::NotIssued);
    // The same receipt, written in another way, after the program was started again.
    SaleJournal again(file);
    EXPECT_EQ(saleIn(again, R"({ "b":2,"a":1 })").record().verdict, Verdict(Outcome::Issued, 8));
}

TEST_F(Journal, BrokenOffSaleIsSettledOnItsOwnDrive)
{
    const struct
    {
        DriveMark now;
        int settled;
        std::string calls;
        Verdict verdict;
    } rows[] = {
        {{noted.drive, 8}, 1, "ask registers next ask", {Outcome::Issued, 8}},
        {noted, 1, "ask registers next ask init registers next ask", Outcome::NotIssued},
        {{noted.drive, 10}, 1, "ask registers next ask", Outcome::Unknown},
        {{QStringLiteral("1111"), 8}, 0, "ask", Outcome::None},
    };
    BasicFrSettings settings;
    for (const auto& row : rows) {
        QFile::remove(file);
        SaleJournal journal(file);
        IdentifiedSale sale = saleIn(journal);
        sale.begin(noted);
        RecordingDriver driver(&settings);
        driver.drive = row.now.drive;
        driver.numbers = {row.now.lastDocument};
        const QList<SettledSale> settled
            = settlePendingSales(driver, journal, {receipt::Protocol::Hex, true});
        ASSERT_EQ(settled.size(), row.settled);
        EXPECT_EQ(driver.calls, row.calls);
        for (const SettledSale& settledSale : settled)
            EXPECT_EQ(settledSale.verdict, row.verdict);
        EXPECT_EQ(sale.record().verdict, row.verdict);
        EXPECT_TRUE(settlePendingSales(driver, journal).isEmpty());
    }
}

// A sale that was broken off has its goods in the journal, and its settlement settles them.
TEST_F(Journal, OlderFileKeepsItsSalesAndGetsMarks)
{
    const QString code = QStringLiteral("010460000000001521A");
    {
        SaleJournal journal(file);
        saleIn(journal).begin(noted);
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "older");
        database.setDatabaseName(file);
        ASSERT_TRUE(database.open());
        QSqlQuery(database).exec("DROP TABLE marks");
    }
    QSqlDatabase::removeDatabase("older");
    SaleJournal journal(file);
    journal.settle("A", {Outcome::Issued, 8});
    EXPECT_EQ(saleIn(journal).record().verdict, Verdict(Outcome::Issued, 8));
    IdentifiedSale broken = saleIn(journal, "{}", "B");
    broken.begin(noted, {{code}});
    EXPECT_FALSE(journal.soldMark(code, "B"));
    EXPECT_EQ(journal.soldMark(code, "A")->document, 0U);
    broken.settle({Outcome::Issued, 9});
    EXPECT_EQ(journal.soldMark(code)->document, 9U);
    EXPECT_EQ(journal.soldMark(code)->id, QStringLiteral("B"));
    EXPECT_LE(journal.soldMark(code)->time, QDateTime::currentDateTimeUtc());
}

TEST_F(Journal, FileThatIsNoneIsAnError)
{
    EXPECT_THROW(SaleJournal(folder.path()), JournalError);
    QFile text(folder.filePath(QStringLiteral("text")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'x'));
    text.close();
    EXPECT_THROW(SaleJournal(text.fileName()), JournalError);
}

} // namespace
