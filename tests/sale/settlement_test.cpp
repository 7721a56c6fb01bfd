#include "recordingdriver.h"
#include "settlement.h"

#include <gtest/gtest.h>

using namespace sale;

namespace {

const DriveMark before{QStringLiteral("9999"), 7};

TEST(Verdict, FollowsTheNumberOfTheLastDocument)
{
    const Verdict unknown = Outcome::Unknown;
    const struct
    {
        DriveMark before;
        DriveMark after;
        Verdict verdict;
    } rows[] = {
        {before, {before.drive, 8}, {Outcome::Issued, 8}},
        {before, before, Outcome::NotIssued},
        {before, {before.drive, 9}, unknown},
        {before, {before.drive, 6}, unknown},
        {before, {QStringLiteral("1111"), 7}, unknown},
        {{before.drive, 0}, {before.drive, 1}, unknown},
    };
    for (const auto& row : rows)
        EXPECT_EQ(verdictOf(row.before, row.after), row.verdict) << row.after.lastDocument;
}

TEST(NoteDrive, CountsWhenTwoReadingsInARowAgree)
{
    const struct
    {
        MarkReading reading;
        QList<quint32> numbers;
        quint32 number;
        const char* calls;
    } rows[] = {
        {MarkReading::Once, {7, 8}, 7, "ask"},
        {MarkReading::UntilTwoAgree, {7, 7, 8}, 7, "ask ask"},
        {MarkReading::UntilTwoAgree, {1, 7, 2, 7, 7}, 7, "ask ask ask ask ask"},
    };
    BasicFrSettings settings;
    for (const auto& row : rows) {
        RecordingDriver driver(&settings);
        driver.numbers = row.numbers;
        EXPECT_EQ(noteDrive(driver, row.reading).lastDocument, row.number) << row.calls;
        EXPECT_EQ(driver.calls, row.calls);
    }
}

TEST(NoteDrive, ReadingsThatNeverAgreeTellNothing)
{
    BasicFrSettings settings;
    RecordingDriver driver(&settings);
    for (quint32 number = 1; number < 100; ++number)
        driver.numbers.append(number);
    EXPECT_EQ(noteDrive(driver), DriveMark());
}

} // namespace
