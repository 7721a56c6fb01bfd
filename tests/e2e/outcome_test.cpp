// What frctl says of a sale whose close was disturbed, and what the register's own journal says.

#include "programs.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

/// The sale of an example under an id, in a journal of its own.
class Outcome : public testing::Test
{
protected:
    QStringList command(const Emulator& emulator) const
    {
        return {"--plugin", QStringLiteral(SPF_PLUGIN), "--protocol", "HEX", "--port", emulator.port(),
            "--json", "--journal", folder.filePath("sales.sqlite"), "--id", "till-1/42", "sell",
            QStringLiteral(FRSPF_EXAMPLES "/sale.json")};
    }

    /// Runs the sale; gives its answer after checking status and outcome.
    QJsonObject sell(const Emulator& emulator, int status, const char* outcome) const
    {
        const Result result = runFrctl(command(emulator));
        EXPECT_EQ(result.status, status) << result.errors.constData();
        const QJsonObject json = QJsonDocument::fromJson(result.output).object();
        EXPECT_EQ(json.value("outcome"), QLatin1String(outcome)) << result.output.constData();
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

QList<QJsonObject> receipts(const Emulator& emulator)
{
    QList<QJsonObject> result;
    for (const QJsonObject& document : emulator.journal()) {
        if (document.value("type") == "sell")
            result.append(document);
    }
    return result;
}

/// The fault for the exchange that closes the first sale of a register: found by counting those of a sale
/// without faults.
QStringList faultAtClose(const char* fault)
{
    static const int exchange = [] {
        const Emulator emulator;
        const Result result = runFrctl({"--protocol", "HEX", "--port", emulator.port(), "--log-level",
            "trace", "sell", QStringLiteral(FRSPF_EXAMPLES "/sale.json")});
        const QString log = QString::fromUtf8(result.errors);
        return 1 + static_cast<int>(log.left(log.indexOf("Закрытие чека")).count("Отправка: 02"));
    }();
    return {"--faults", QString(fault) + QLatin1Char('@') + QString::number(exchange)};
}

TEST_F(Outcome, LostAnswerMeansIssued)
{
    const Emulator emulator(faultAtClose("lost"));
    const QJsonObject failed = sell(emulator, 3, "issued");
    EXPECT_EQ(failed.value("exception"), "FrNoConnectionException");
    ASSERT_EQ(receipts(emulator).size(), 1);
    const QJsonObject again = sell(emulator, 0, "issued");
    for (const QJsonObject& answer : {failed, again})
        EXPECT_EQ(answer.value("documentNumber"), receipts(emulator).constFirst().value("number"));
    EXPECT_EQ(receipts(emulator).size(), 1);
}

TEST_F(Outcome, DisturbedCloseIsJudged)
{
    const struct
    {
        const char* fault;
        int status;
        const char* outcome;
        int receipts;
    } rows[] = {{"silence", 4, "notIssued", 0}, {"badcheck", 3, "issued", 1}, {"paper-out", 3, "issued", 1},
        {"restart", 4, "notIssued", 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fault);
        QFile::remove(folder.filePath("sales.sqlite"));
        const Emulator emulator(faultAtClose(row.fault));
        sell(emulator, row.status, row.outcome);
        EXPECT_EQ(receipts(emulator).size(), row.receipts);
    }
}

TEST_F(Outcome, KilledAfterTheRegisterActed)
{
    const Emulator emulator(faultAtClose("lost"));
    kill(emulator, [&emulator](const QByteArray&) { return !receipts(emulator).isEmpty(); });
    sell(emulator, 3, "issued");
    EXPECT_EQ(sell(emulator, 0, "issued").value("repeated"), true);
    EXPECT_EQ(receipts(emulator).size(), 1);
}

TEST_F(Outcome, KilledBeforeTheRegisterActed)
{
    const Emulator emulator(faultAtClose("silence"));
    kill(emulator, [](const QByteArray& log) { return log.contains("Закрытие чека"); });
    EXPECT_TRUE(receipts(emulator).isEmpty());
    sell(emulator, 0, "issued");
    EXPECT_EQ(receipts(emulator).size(), 1);
}

} // namespace
