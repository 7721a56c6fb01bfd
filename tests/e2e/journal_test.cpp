// The journal of a machine, as frctl keeps and shows it.

#include "programs.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

const QString sale = QStringLiteral(FRSPF_EXAMPLES "/sale.json");

class MachineJournal : public testing::TestWithParam<QString>
{
protected:
    QStringList withRegister(const Emulator& one, const QStringList& command) const
    {
        return QStringList{"--plugin", SPF_PLUGIN, "--protocol", GetParam(), "--port", one.port(),
                   "--cashier", "Иванова А. П."}
        + withJournal(command);
    }

    QStringList withJournal(const QStringList& command) const
    {
        return QStringList{"--json", "--journal", file} + command;
    }

    QJsonObject run(const QStringList& arguments, int status = 0) const
    {
        const Result result = runFrctl(arguments);
        EXPECT_EQ(result.status, status) << result.errors.constData() << result.output.constData();
        return result.json();
    }

    QJsonObject onRegister(const QString& command, int status = 0) const
    {
        return run(withRegister(emulator, command.split(' ')), status);
    }

    QJsonObject alone(const QString& command, int status = 0) const
    {
        return run(withJournal(command.split(' ')), status);
    }

    QTemporaryDir folder;
    const QString file = folder.filePath("sales.sqlite");
    const Emulator emulator;
};

QStringList listed(const QJsonObject& list)
{
    QStringList lines;
    for (const QJsonValue& document : list.value("documents").toArray())
        lines.append(document["kind"].toString() + ' ' + document["state"].toString());
    return lines;
}

TEST_P(MachineJournal, HasEachDocumentAndShowsIt)
{
    // The opening of the shift is a document, too.
    onRegister("cash-in 100");
    onRegister("--id till-1:42 sell " + sale);
    onRegister("cash-out 5000", 4);
    onRegister("x-report");
    EXPECT_EQ(listed(alone("journal list")),
        (QStringList{
            "openShift issued", "cashIn issued", "sell issued", "cashOut notIssued", "xReport issued"}));
    EXPECT_EQ(listed(alone("journal list --state notIssued")), QStringList{"cashOut notIssued"});
    QJsonObject shown = alone("journal show till-1:42");
    EXPECT_EQ(shown.value("body").toObject(), QJsonDocument::fromJson(readAll(sale)).object());
    EXPECT_EQ(shown.value("attempts").toArray().size(), 1);
    const QByteArray exported = runFrctl(withJournal({"journal", "export"})).output;
    shown.remove("warnings");
    EXPECT_EQ(exported.count('\n'), 5);
    EXPECT_EQ(QJsonDocument::fromJson(exported.split('\n').at(2)).object(), shown);
    EXPECT_TRUE(onRegister("journal check").value("differences").toArray().isEmpty());
    EXPECT_EQ(alone("journal anonymise --before 2200-01-01").value("anonymised"), 5);
    EXPECT_EQ(alone("--id till-1:42 sell " + sale).value("replayed"), true);
    alone("journal list --state done", 2);
    for (const char* const misplaced : {"list --before 2020-01-01", "show till-1:42 --state issued",
             "backup copy --since 2020-01-01", "settle --note seen", "list --force"})
        alone(QStringLiteral("journal ") + misplaced, 2);
    alone("journal show till-1:43", 1);
    alone("journal resolve till-1:42 not-issued --note seen", 1);
    alone("journal resolve till-1:42 not-issued --document 3 --note seen", 2);
}

TEST_P(MachineJournal, DocumentsOfAnotherAreNoticedAndAccepted)
{
    onRegister("sell " + sale);
    alone("journal backup " + folder.filePath("copy"));
    onRegister("sell " + sale);
    // The machine's disk was replaced, and the copy put back.
    for (const char* const extension : {"-wal", "-shm"})
        QFile::remove(file + extension);
    QFile::remove(file);
    ASSERT_TRUE(QFile::rename(folder.filePath("copy"), file));
    const QJsonObject refused = onRegister("sell " + sale, 1);
    EXPECT_EQ(refused.value("error")["needsReview"], true);
    EXPECT_EQ(refused.value("state"), "notIssued");
    const QJsonObject difference
        = onRegister("journal check", 1).value("differences").toArray().at(0).toObject();
    EXPECT_EQ(difference.value("register").toDouble(), 2 * difference.value("journal").toDouble());
    onRegister("journal accept --note none_of_ours");
    onRegister("sell " + sale);
    EXPECT_EQ(emulator.sales().size(), 3);
    // So is a journal that was lost.
    QFile::remove(file);
    onRegister("--exclusive no sell " + sale);
    EXPECT_EQ(emulator.sales().size(), 4);
}

TEST_P(MachineJournal, OneOfTwoAtTheSameMomentSells)
{
    for (int round = 0; round < 5; ++round) {
        const Emulator one;
        const Emulator other;
        const QStringList command{"--id", "till-1:" + QString::number(round), "sell", sale};
        QProcess programs[2];
        programs[0].start(QStringLiteral(FRCTL), withRegister(one, command));
        programs[1].start(QStringLiteral(FRCTL), withRegister(other, command));
        for (QProcess& program : programs)
            program.waitForFinished();
        EXPECT_EQ(one.sales().size() + other.sales().size(), 1)
            << programs[0].readAllStandardError().constData()
            << programs[1].readAllStandardError().constData();
    }
}

TEST_P(MachineJournal, DamageStopsDocumentsAndNothingElse)
{
    onRegister("sell " + sale);
    written(folder, "sales.sqlite", QByteArray(8192, 'x'));
    const QJsonObject told = onRegister("status");
    EXPECT_TRUE(told.value("warnings").toArray().at(0)["text"].toString().contains(file));
    for (const char* const command : {"cash-in 1", "z-report", "x-report"}) {
        const QJsonValue refused = onRegister(command, 1).value("error");
        EXPECT_EQ(refused["exception"], "HostError");
        const QString error = refused["text"].toString();
        EXPECT_TRUE(error.contains(file) && error.contains("put a backup in its place"))
            << error.toStdString();
    }
    onRegister("sell " + sale, 1);
    // What an earlier run has made of an id nobody can say.
    EXPECT_EQ(onRegister("--id till-1:43 sell " + sale, 5).value("state"), "unknown");
    EXPECT_TRUE(onRegister("journal check", 1).value("warnings").toArray().isEmpty()) << "it is told once";
    EXPECT_EQ(emulator.sales().size(), 1);
    EXPECT_EQ(emulator.journal().size(), 2);
}

INSTANTIATE_TEST_SUITE_P(Protocols, MachineJournal, testing::Values("HEX", "XML"),
    [](const auto& test) { return test.param.toStdString(); });

} // namespace
