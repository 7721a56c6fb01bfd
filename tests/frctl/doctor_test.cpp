// What the doctor of the command line calls ill and advises, and which first answer is none of a register.

#include "drivechecks.h"
#include "firstanswer.h"
#include "journalaccess.h"
#include "journalerror.h"
#include "machinestore.h"
#include "portrights.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

const QDateTime now(QDate(2026, 3, 1), QTime(12, 0));

TEST(Doctor, TellsADriveThatEndsAndDocumentsThatWait)
{
    // Phase, flags and last day of the drive, number and age in days of what waits; whether each is well.
    const std::tuple<int, int, QDate, int, int, bool, bool> rows[]
        = {{3, 0, QDate(2026, 3, 31), 0, 0, true, true}, {3, 0, QDate(2026, 3, 30), -1, 0, false, true},
            {3, 0, QDate(2026, 2, 28), 0, 0, false, true}, {3, 0, {}, 7, 5, true, true},
            {3, 0, {}, 7, 6, true, false}, {3, 1, {}, 0, 0, false, true}, {3, 2, {}, 0, 0, false, true},
            {3, 4, {}, 0, 0, false, true}, {3, 8, {}, 7, 0, true, false}, {3, 8, {}, 0, 0, true, false},
            {7, 0, {}, 0, 0, false, true}};
    for (const auto& [phase, flags, last, unsent, waitedDays, isDriveWell, isUnsentWell] : rows) {
        FnInfo info;
        info.fnStatus.lifePhase = static_cast<quint8>(phase);
        info.fnStatus.warningFlags = static_cast<quint8>(flags);
        info.validityDate.date = last;
        info.ofdStatus.firstUnsentNumber = unsent;
        info.ofdStatus.firstUnsentDateTime = now.addDays(-waitedDays);
        const QList<HealthCheck> hex = driveChecks(info, now, true);
        EXPECT_EQ(hex.at(0).isWell, isDriveWell) << hex.at(0).line().toStdString();
        EXPECT_EQ(hex.at(1).isWell, isUnsentWell) << hex.at(1).line().toStdString();
        // Of what is not known nothing stands there.
        EXPECT_EQ(hex.at(1).line().contains("number"), unsent > 0) << hex.at(1).line().toStdString();
        // Over XML it is not told since when they wait.
        EXPECT_EQ(driveChecks(info, now, false).at(1).isWell, flags != 8);
    }
}

TEST(Doctor, NamesAGroupOnlyWhereItOpensThePortAndNothingElse)
{
    const std::pair<PortRights, const char*> rows[]
        = {{{"root", "dialout", 0660, false}, "usermod -aG dialout "},
            {{"root", "root", 0660, false}, "udev rule (KERNEL==\"ttyS0\""},
            {{"root", "dialout", 0600, false}, "udev rule"},
            {{"root", "tty", 0620, true}, "pty of a program of root"}};
    for (const auto& [rights, expected] : rows) {
        const QString advice = portAdvice("/dev/ttyS0", rights);
        EXPECT_TRUE(advice.contains(expected)) << advice.toStdString();
        EXPECT_FALSE(advice.contains("-aG root")) << advice.toStdString();
    }
}

TEST(Doctor, AsksForAJournalThatCouldBeMade)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_NO_THROW(JournalAccess(folder.filePath("new/folder/sales")).requirePlace());
    EXPECT_FALSE(QFile::exists(folder.filePath("new")));
    EXPECT_THROW(JournalAccess(folder.filePath("file/sales")).requirePlace(), sale::JournalError);
}

TEST(Doctor, JournalIsThatOfTheMachinesService)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("frserver.ini");
    EXPECT_EQ(machineStore(name), QString());
    const auto write = [&name](const QByteArray& text) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    write("[service]\nqueue-limit = 5\n[register a]\nport = x\n");
    EXPECT_EQ(machineStore(name), QString());
    write("[register a]\nport = x\n[store]\nurl = postgresql:///rack?host=/run/postgresql\n");
    EXPECT_EQ(machineStore(name), "postgresql:///rack?host=/run/postgresql");
    write("what is this");
    EXPECT_THROW(machineStore(name), sale::JournalError);
}

// What comes first is of the other protocol, or of none.
TEST(FirstAnswer, IsKnownByItsFirstBytes)
{
    const QByteArray frame = QByteArray("\x02") + "1";
    const std::tuple<bool, QByteArray, bool> rows[] = {{false, "<?xml", false},
        {false, "<?xml?><ErrorCode>5002</ErrorCode>", true}, {false, "\x06", true}, {false, frame, true},
        {true, "\x06", false}, {true, frame, false}, {true, "<?xml", true}, {true, "", false}};
    for (const auto& [isHex, bytes, isForeign] : rows) {
        FirstAnswer answer(isHex, nullptr);
        // What others have left is no answer.
        answer.received("x");
        EXPECT_FALSE(answer.isForeign());
        answer.sent("?");
        answer.received(bytes);
        EXPECT_EQ(answer.isForeign(), isForeign) << bytes.constData();
    }
}

} // namespace
