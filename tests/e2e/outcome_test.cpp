// What frctl says of a sale whose close was disturbed, and what the register's own journal says.

#include "programs.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

/// The sale of an example under an id, in a journal of its own.
class Outcome : public testing::Test
{
protected:
    QStringList command(const Emulator& emulator) const
    {
        return {"--plugin", QStringLiteral(SPF_PLUGIN), "--protocol", "HEX", "--port", emulator.port(),
            "--json", "--journal", folder.filePath("sales.sqlite"), "--id", "till-1:42", "sell",
            QStringLiteral(FRSPF_EXAMPLES "/sale.json")};
    }

    /// Runs the sale; gives its answer after checking status and state.
    QJsonObject sell(const Emulator& emulator, int status, const char* state) const
    {
        return answerOf(runFrctl(command(emulator)), status, state);
    }

    QJsonObject answerOf(const Result& result, int status, const char* state) const
    {
        EXPECT_EQ(result.status, status) << result.errors.constData();
        const QJsonObject json = result.json();
        EXPECT_EQ(json.value("state"), QLatin1String(state)) << result.output.constData();
        return json;
    }

    /// Starts the sale and kills it without mercy once the condition holds.
    template <typename Condition>
    void kill(const Emulator& emulator, const Condition& condition) const
    {
        QProcess process;
        process.start(QStringLiteral(FRCTL), QStringList{"--log-level", "info"} + command(emulator));
        QByteArray errors;
        for (int attempt = 0; attempt < 500 && !condition(errors); ++attempt) {
            process.waitForReadyRead(10);
            errors += process.readAllStandardError();
        }
        EXPECT_TRUE(condition(errors)) << errors.constData();
        process.kill();
        process.waitForFinished();
        EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
    }

    QTemporaryDir folder;
};

QString logOf(const QStringList& command)
{
    const Emulator emulator;
    // What another run has left to be settled would be asked about first.
    const QTemporaryDir journal;
    const QStringList options{"--protocol", "HEX", "--port", emulator.port(), "--log-level", "trace",
        "--journal", journal.filePath("sales")};
    return QString::fromUtf8(runFrctl(options + command).errors);
}

/// The fault for the exchange that follows the line of the log, when the command, a sale mostly, is a
/// register's first: found by counting the exchanges of a run without faults.
QStringList faultAt(
    const char* line, const char* fault, const QStringList& command = {"sell", FRSPF_EXAMPLES "/sale.json"})
{
    static QMap<QStringList, QString> logs;
    if (!logs.contains(command))
        logs.insert(command, logOf(command));
    const QString log = logs.value(command);
    const qsizetype exchange = 1 + log.left(log.indexOf(line)).count("Отправка: 02");
    return {"--faults", QString(fault) + QLatin1Char('@') + QString::number(exchange)};
}

QStringList faultAtClose(const char* fault)
{
    return faultAt("Закрытие чека", fault);
}

TEST_F(Outcome, DisturbedCloseIsJudged)
{
    const std::tuple<const char*, int, const char*, int, const char*> rows[] = {
        {"silence", 4, "notIssued", 0, "FrNoConnectionException"},
        {"lost", 3, "issued", 1, "FrNoConnectionException"},
        {"badcheck", 3, "issued", 1, "FrCommandException"},
        {"paper-out", 4, "notIssued", 0, "FrPaperException"},
        {"paper-ends", 3, "issued", 1, "FrPaperException"},
        {"paper-ends-quietly", 3, "issued", 1, "FrPaperException"},
        {"restart", 4, "notIssued", 0, "FrCommandException"},
    };
    for (const auto& [fault, status, state, receipts, exception] : rows) {
        SCOPED_TRACE(fault);
        QFile::remove(folder.filePath("sales.sqlite"));
        const Emulator emulator(faultAtClose(fault));
        const QJsonObject failed = sell(emulator, status, state);
        EXPECT_EQ(failed.value("error")["exception"], QLatin1String(exception));
        ASSERT_EQ(emulator.sales().size(), receipts);
        if (receipts == 0)
            continue;
        const QJsonObject again = sell(emulator, 0, "issued");
        for (const QJsonObject& answer : {failed, again})
            EXPECT_EQ(answer.value("documentNumber"), emulator.sales().constFirst().value("number"));
        EXPECT_EQ(emulator.sales().size(), 1);
    }
}

TEST_F(Outcome, InterruptedSaleIsCancelledAndInTheJournal)
{
    const char* const line = "Добавление предмета расчета";
    const Emulator emulator(faultAt(line, "silence"));
    const QStringList logged = QStringList{"--log-level", "debug"} + command(emulator);
    answerOf(interruptFrctl(logged, line, SIGHUP), 130, "notIssued");
    const Result cancel = runFrctl({"--protocol", "HEX", "--port", emulator.port(), "cancel"});
    EXPECT_EQ(cancel.status, 1) << "no document is open any more";
    EXPECT_EQ(sell(emulator, 0, "issued").value("replayed"), false);
    EXPECT_EQ(emulator.sales().size(), 1);
}

TEST_F(Outcome, InterruptedOperationTellsWhatIsKnown)
{
    const std::tuple<const char*, QStringList, const char*> rows[] = {
        {"Открытие смены", {"sell", FRSPF_EXAMPLES "/sale.json"}, "notIssued"},
        {"Открытие смены", {"open-shift"}, "running"},
        {"Закрытие чека", {"sell", FRSPF_EXAMPLES "/sale.json"}, "running"},
    };
    for (const auto& [line, command, state] : rows) {
        const Emulator emulator(faultAt(line, "silence", command));
        const QTemporaryDir journal;
        const QStringList options{"--protocol", "HEX", "--port", emulator.port(), "--json", "--log-level",
            "debug", "--journal", journal.filePath("sales")};
        const Result result = interruptFrctl(options + command, line, SIGTERM);
        answerOf(result, 130, state);
        EXPECT_EQ(result.errors.contains("the document was not opened"), QByteArray(state) == "notIssued");
    }
}

// Somebody else may have made just such a document: a person says what it was.
TEST_F(Outcome, PersonSaysWhatNobodyCanTell)
{
    const Emulator emulator(faultAtClose("lost"));
    kill(emulator, [&emulator](const QByteArray&) { return !emulator.sales().isEmpty(); });
    const QStringList shared{"--exclusive", "no"};
    for (int time = 0; time < 2; ++time)
        answerOf(runFrctl(shared + command(emulator)), 5, "unknown");
    const QStringList resolve{
        "--journal", folder.filePath("sales.sqlite"), "journal", "resolve", "till-1:42"};
    EXPECT_EQ(runFrctl(resolve + QStringList{"not-issued"}).status, 2) << "no note";
    EXPECT_EQ(runFrctl(resolve + QStringList{"issued", "--document", "3"}).status, 0);
    EXPECT_EQ(sell(emulator, 0, "issued").value("documentNumber"), 3);
    EXPECT_EQ(emulator.sales().size(), 1);
}

TEST_F(Outcome, KilledAfterTheRegisterActed)
{
    const Emulator emulator(faultAtClose("lost"));
    kill(emulator, [&emulator](const QByteArray&) { return !emulator.sales().isEmpty(); });
    sell(emulator, 3, "issued");
    EXPECT_EQ(sell(emulator, 0, "issued").value("replayed"), true);
    EXPECT_EQ(emulator.sales().size(), 1);
}

TEST_F(Outcome, ItsOwnDriveAloneTellsWhatHasBecomeOfIt)
{
    const Emulator emulator(faultAtClose("lost"));
    kill(emulator, [&emulator](const QByteArray&) { return !emulator.sales().isEmpty(); });
    const Emulator other({"--drive", "9999000000000020"});
    const auto settle = [this](const QString& port, const QStringList& more = {}) {
        return runFrctl(QStringList{"--plugin", SPF_PLUGIN, "--protocol", "HEX", "--port", port, "--json",
                            "--journal", folder.filePath("sales.sqlite"), "journal", "settle", "till-1:42"}
            + more);
    };
    const Result elsewhere = settle(other.port());
    EXPECT_EQ(elsewhere.status, 5) << elsewhere.errors.constData();
    EXPECT_EQ(elsewhere.json().value("error")["kind"], "wrongRegister");
    EXPECT_EQ(sell(other, 5, "running").value("error")["kind"], "wrongRegister");
    EXPECT_EQ(settle(emulator.port()).status, 0);
    EXPECT_EQ(settle(other.port()).status, 0) << "it is shown as it is";
    EXPECT_EQ(sell(other, 0, "issued").value("replayed"), true);
}

TEST_F(Outcome, KilledBeforeTheRegisterActed)
{
    const Emulator emulator(faultAtClose("silence"));
    kill(emulator, [](const QByteArray& log) { return log.contains("Закрытие чека"); });
    EXPECT_TRUE(emulator.sales().isEmpty());
    sell(emulator, 0, "issued");
    EXPECT_EQ(emulator.sales().size(), 1);
}

// Who reads its output has stopped; one signal is enough all the same.
TEST(Frctl, InterruptionEndsTheWaitForAReader)
{
    const Emulator emulator;
    const QTemporaryDir folder;
    const QString script
        = QStringLiteral("mkfifo %1 && exec 4<>%1 && head -c 65536 /dev/zero >&4 && exec " FRCTL
                         " --plugin " SPF_PLUGIN " --protocol HEX --log-level info --port %2 status >&4")
              .arg(folder.filePath("pipe"), emulator.port());
    const Result result = interruptShell(script, "Порт закрыт", SIGTERM);
    EXPECT_EQ(result.status, 130) << result.errors.constData();
    EXPECT_TRUE(result.errors.contains("frctl: standard output: ")) << result.errors.constData();
}

TEST(Frctl, IgnoredSignalsStayIgnored)
{
    const Emulator emulator;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const QString script = QStringLiteral("trap '' %1; exec " FRCTL " --plugin " SPF_PLUGIN
                                              " --protocol HEX --log-level debug --port %2 params list")
                                   .arg(signal)
                                   .arg(emulator.port());
        EXPECT_EQ(interruptShell(script, "Получение параметра 2 0", signal).status, 0) << signal;
    }
}

} // namespace
