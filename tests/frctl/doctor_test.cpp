// When the doctor of the command line calls a fiscal drive ill.

#include "drivechecks.h"

#include <gtest/gtest.h>

using namespace frctl;

namespace {

const QDateTime now(QDate(2026, 3, 1), QTime(12, 0));

TEST(Doctor, TellsADriveThatEndsAndDocumentsThatWait)
{
    const struct
    {
        int phase;
        int flags;
        QDate last;
        int unsent;
        int waitedDays;
        bool isDriveWell;
        bool isUnsentWell;
    } rows[] = {{3, 0, {2026, 3, 31}, 0, 0, true, true}, {3, 0, {2026, 3, 30}, -1, 0, false, true},
        {3, 0, {2026, 2, 28}, 0, 0, false, true}, {3, 0, {}, 7, 5, true, true}, {3, 0, {}, 7, 6, true, false},
        {3, 1, {}, 0, 0, false, true}, {3, 2, {}, 0, 0, false, true}, {3, 4, {}, 0, 0, false, true},
        {3, 8, {}, 7, 0, true, false}, {7, 0, {}, 0, 0, false, true}};
    for (const auto& row : rows) {
        FnInfo info;
        info.fnStatus.lifePhase = static_cast<quint8>(row.phase);
        info.fnStatus.warningFlags = static_cast<quint8>(row.flags);
        info.validityDate.date = row.last;
        info.ofdStatus.firstUnsentNumber = row.unsent;
        info.ofdStatus.firstUnsentDateTime = now.addDays(-row.waitedDays);
        SCOPED_TRACE(&row - rows);
        const QList<HealthCheck> hex = driveChecks(info, now, true);
        EXPECT_EQ(hex.at(0).isWell, row.isDriveWell) << hex.at(0).line().toStdString();
        EXPECT_EQ(hex.at(1).isWell, row.isUnsentWell) << hex.at(1).line().toStdString();
        // Over XML it is not told since when they wait.
        EXPECT_EQ(driveChecks(info, now, false).at(1).isWell, row.flags != 8);
    }
}

} // namespace
