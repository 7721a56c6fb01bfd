#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "errors.h"
#include "identifiedsale.h"
#include "settlement.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

const DriveMark Before{QStringLiteral("9999"), 7};

TEST(Verdict, FollowsTheNumberOfTheLastDocument)
{
    const DocumentVerdict unknown = DocumentOutcome::Unknown;
    const struct
    {
        DriveMark before;
        DriveMark after;
        DocumentVerdict verdict;
    } rows[] = {
        {Before, {Before.drive, 8}, {DocumentOutcome::Issued, 8}},
        {Before, Before, DocumentOutcome::NotIssued},
        {Before, {Before.drive, 9}, unknown},
        {Before, {Before.drive, 6}, unknown},
        {Before, {QStringLiteral("1111"), 7}, unknown},
        {{Before.drive, 0}, {Before.drive, 1}, unknown},
    };
    for (const auto& row : rows)
        EXPECT_EQ(verdictOf(row.before, row.after), row.verdict) << row.after.lastDocument;
}

/// A register of which nothing but its fiscal drive is known.
class Drive : public BasicFrDriver
{
public:
    explicit Drive(BasicFrSettings* ownSettings)
        : BasicFrDriver(nullptr, QStringLiteral("test"), ownSettings)
    {
    }

    FnInfo getFnInfo() override
    {
        FnInfo info;
        info.fnStatus.fnNumber = mark.drive;
        info.fnStatus.lastFdNumber = mark.lastDocument;
        return info;
    }
    void init() override { ++inits; }

    DriveMark mark = Before;
    int inits = 0;
};

class Journal : public testing::Test
{
protected:
    IdentifiedSale sale(const QByteArray& receipt = R"({"a": 1, "b": 2})", const char* id = "A") const
    {
        return {file, QString::fromLatin1(id), receipt};
    }

    QTemporaryDir folder;
    /// Its folder is not there yet.
    const QString file = folder.filePath(QStringLiteral("data/sales.sqlite"));
    BasicFrSettings settings;
    Drive drive{&settings};
};

TEST_F(Journal, SaleIsDoneOnce)
{
    EXPECT_FALSE(sale().answer());
    sale().begin(Before);
    EXPECT_THROW(sale().begin(Before), HostError);
    sale().settle(DocumentOutcome::NotIssued);
    EXPECT_FALSE(sale().answer());
    sale().begin(Before);
    sale().settle({DocumentOutcome::Issued, 8});
    // The same receipt, written in another way.
    const std::optional<Output> answer = sale(R"({ "b":2,"a":1 })").answer();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->json.value(QStringLiteral("outcome")), QStringLiteral("issued"));
    EXPECT_EQ(answer->json.value(QStringLiteral("documentNumber")), 8);
    EXPECT_EQ(answer->status, ExitSuccess);
    EXPECT_THROW(sale().begin(Before), HostError);
    EXPECT_THROW(sale(R"({"a": 1, "b": 3})"), UsageError);
    EXPECT_FALSE(sale(R"({"a": 1, "b": 3})", "B").answer());
}

TEST_F(Journal, BrokenOffSaleIsSettledOnItsOwnDrive)
{
    const struct
    {
        DriveMark now;
        int settled;
        int inits;
        DocumentVerdict verdict;
    } rows[] = {
        {{Before.drive, 8}, 1, 0, {DocumentOutcome::Issued, 8}},
        {Before, 1, 1, DocumentOutcome::NotIssued},
        {{Before.drive, 10}, 1, 0, DocumentOutcome::Unknown},
        {{QStringLiteral("1111"), 8}, 0, 0, DocumentOutcome::Unknown},
    };
    for (const auto& row : rows) {
        QFile::remove(file);
        sale().begin(Before);
        drive.mark = row.now;
        drive.inits = 0;
        SaleJournal journal(file);
        const QList<SettledSale> settled = settlePendingSales(drive, journal);
        ASSERT_EQ(settled.size(), row.settled);
        EXPECT_EQ(drive.inits, row.inits);
        for (const SettledSale& settledSale : settled)
            EXPECT_EQ(settledSale.verdict, row.verdict);
        try {
            const std::optional<Output> answer = sale().settledAnswer();
            EXPECT_EQ(answer.has_value(), row.verdict.outcome == DocumentOutcome::Issued);
            EXPECT_EQ(answer ? answer->status : ExitIssued, ExitIssued);
        } catch (const RegisterError& error) {
            EXPECT_EQ(error.verdict(), row.verdict);
        }
        EXPECT_TRUE(settlePendingSales(drive, journal).isEmpty());
    }
}

TEST_F(Journal, FileThatIsNoneIsAnError)
{
    EXPECT_THROW(SaleJournal(folder.path()), HostError);
    QFile text(folder.filePath(QStringLiteral("text")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'x'));
    text.close();
    EXPECT_THROW(SaleJournal(text.fileName()), HostError);
}

} // namespace
