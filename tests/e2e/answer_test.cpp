// What the commands answer with --json: what a document has become, and the form of all the others.

#include "programs.h"

#include <QDateTime>
#include <QJsonArray>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

/// A register, a journal and the protocol between them.
class Told : public testing::TestWithParam<const char*>
{
protected:
    QStringList command(const QString& line) const
    {
        QString whole = line;
        whole.replace('%', FRSPF_EXAMPLES "/").replace('~', folder.path() + '/');
        const QStringList port
            = line.contains("--port ") ? QStringList() : QStringList{"--port", emulator.port()};
        return port
            + QStringList{"--protocol", protocol, "--cashier", "Иванова", "--json", "--journal",
                folder.filePath("sales")}
        + whole.split(' ');
    }

    QJsonObject ask(const QString& line, int status = 0) const
    {
        const Result result = runFrctl(command(line));
        EXPECT_EQ(result.status, status) << line.toStdString() << ": " << result.errors.constData();
        return result.json();
    }

    const QString protocol = QString::fromUtf8(GetParam());
    const bool isHex = protocol == "HEX";
    const QTemporaryDir folder;
    const Emulator emulator;
};

TEST_P(Told, OfADocumentIsWhatTheRegisterHas)
{
    // What it comes to, and whether it has no number in the fiscal drive.
    const std::tuple<const char*, double, bool> rows[] = {{"open-shift", 0, false},
        {"sell %sale.json", 305.23, false}, {"cash-in 100", 100, true}, {"sell %sale.json", 305.23, false},
        {"refund %return.json", 64.9, false}, {"sell %sale.json", 305.23, false}, {"x-report", 0, true},
        {"sell %sale.json", 305.23, false}, {"z-report", 0, false}};
    for (const auto& [line, total, isUnnumbered] : rows) {
        SCOPED_TRACE(line);
        const QJsonObject told = ask(line);
        EXPECT_EQ(told.value("state"), "issued");
        EXPECT_EQ(told.value("times"), 1);
        EXPECT_TRUE(told.value("error").isNull());
        EXPECT_EQ(told.value("total").toDouble(), total);
        EXPECT_EQ(told.value("dateTime").isNull(), !isHex);
        const QJsonObject document = emulator.journal().constLast();
        const bool isReceipt = QString(line).contains('%');
        if (!isReceipt) {
            EXPECT_EQ(told.value("documentNumber").isNull(), isUnnumbered);
            continue;
        }
        EXPECT_EQ(told.value("documentNumber"), document.value("number"));
        EXPECT_EQ(told.value("documentNumberRead"), false);
        EXPECT_EQ(told.value("receiptNumber"), isHex ? document.value("receipt") : QJsonValue());
        EXPECT_EQ(told.value("shift"), isHex ? document.value("shift") : QJsonValue());
    }
}

TEST_P(Told, OfAFailureHasAKind)
{
    const std::tuple<const char*, int, const char*, const char*> rows[]
        = {{"cash-out 5000", 4, "cash", "notIssued"}, {"sell %text.txt", 2, "data", "notIssued"},
            {"--id till-1:42 sell %return.json", 2, "data", "notIssued"},
            {"--port /nowhere sell %sale.json", 1, "line", "notIssued"}, {"sell", 2, "data", "notIssued"},
            {"sell --wait x %sale.json", 2, "data", "notIssued"}, {"params get nonsense", 1, "other", ""},
            {"time yesterday", 2, "data", ""}, {"time set 2001-01-01T00:00:00", 2, "data", ""},
            {"--expect-serial 77 sell %sale.json", 1, "wrongRegister", "notIssued"},
            {"--expect-serial 77 open-shift", 1, "wrongRegister", "notIssued"},
            {"--expect-serial 77 drawer open", 1, "wrongRegister", ""}, {"nonsense", 2, "data", ""}};
    for (const auto& [command, status, kind, state] : rows) {
        SCOPED_TRACE(command);
        const QJsonObject told = ask(command, status);
        EXPECT_EQ(told.value("error")["kind"], QLatin1String(kind));
        EXPECT_EQ(told.value("state").toString(), QLatin1String(state));
    }
    EXPECT_TRUE(emulator.sales().isEmpty());
    ask("--id till-1:43 sell %sale.json");
    // What the id is already, whatever is given with it now.
    const QJsonObject conflict = ask("--id till-1:43 sell %agent-sale.json", 2);
    EXPECT_EQ(conflict.value("state"), "issued");
    EXPECT_TRUE(conflict.value("total").isNull());
}

TEST_P(Told, OfTheOperatorHasTheSameNames)
{
    const QJsonObject none = ask("ofd");
    EXPECT_EQ(none.value("waitExceeded"), false);
    ask("sell %sale.json");
    const QJsonObject waiting = ask("ofd");
    EXPECT_EQ(waiting.keys(), none.keys());
    QJsonObject ofDrive = ask("fn").value("ofd").toObject();
    ofDrive.insert("warnings", QJsonArray());
    ofDrive.insert("testDrive", true);
    EXPECT_EQ(waiting, ofDrive);
    EXPECT_GT(waiting.value(isHex ? "firstUnsentNumber" : "unsentCount").toInt(), 0);
    EXPECT_TRUE(waiting.value(isHex ? "unsentCount" : "firstUnsentNumber").isNull());
}

TEST_P(Told, OfTheRegisterIsItsStateAndThatItIsATestOne)
{
    const QJsonObject closed = ask("status");
    EXPECT_EQ(closed.value("testDrive"), true);
    EXPECT_EQ(closed.value("drawerOpen"), false);
    EXPECT_TRUE(closed.value("paper").isNull() && closed.value("coverOpen").isNull());
    ask("--expect-serial " + closed.value("serialNumber").toString() + " drawer open");
    EXPECT_EQ(ask("status").value("drawerOpen"), true);
    EXPECT_EQ(ask("open-shift").value("testDrive"), true);
    EXPECT_TRUE(ask("time get").value("testDrive").isNull());
}

// A register whose clock is ahead of the computer's, and its documents with it.
TEST_P(Told, OfAClockThatWouldGoFarOrBehindTheLastDocumentIsNothingWithoutForce)
{
    const Emulator ahead({"--clock", "2099-01-01T12:00:00"});
    const QString there = "--port " + ahead.port() + ' ';
    ask(there + "open-shift");
    ask(there + "z-report");
    const QString now = QDateTime::currentDateTime().toString(Qt::ISODate);
    for (const QString& time : {QString(), ' ' + now}) {
        const QJsonValue error = ask(there + "time set" + time, 1).value("error");
        EXPECT_EQ(error["kind"], "clock");
        EXPECT_EQ(error["text"].toString().contains("last document"), !time.isEmpty());
    }
    EXPECT_TRUE(ask(there + "time get").value("dateTime").toString().startsWith("2099"));
    EXPECT_TRUE(ask(there + "time set 2099-01-01T13:00:00 --force").contains("dateTime"));
}

// What detect prints is all that a configuration needs.
TEST_P(Told, OfItsPlaceIsASectionThatFindsItAgain)
{
    const QJsonArray ports = ask("detect").value("ports").toArray();
    ASSERT_EQ(ports.size(), 1);
    const QJsonObject port = ports.at(0).toObject();
    EXPECT_EQ(port.value("register")["protocol"], protocol);
    EXPECT_EQ(port.value("register")["inn"].isNull(), !isHex);
    EXPECT_EQ(port.value("holders").toArray(), QJsonArray());
    const QString file = written(folder, "frctl.ini", port.value("section").toString().toUtf8());
    const QStringList options{"--config", file, "--register", "till1", "status"};
    const Result status = runFrctl(options);
    EXPECT_EQ(status.status, 0) << status.errors.constData();
    EXPECT_TRUE(status.output.contains(port.value("register")["serialNumber"].toString().toUtf8()));
}

TEST_P(Told, OfItsHealthIsALineEachAndWhatToDo)
{
    const auto check = [this](const QString& line, int status, const QString& name) {
        for (const QJsonValue value : ask(line, status).value("checks").toArray()) {
            if (value["name"] == name)
                return value.toObject();
        }
        return QJsonObject();
    };
    EXPECT_EQ(check("doctor", 0, "register").value("ok"), true);
    EXPECT_TRUE(check("doctor", 0, "paper").value("ok").isNull());
    const Result told = runFrctl({"--port", emulator.port(), "--protocol", protocol, "doctor"});
    EXPECT_TRUE(told.output.contains("\ntest drive 9999")) << told.output.constData();
    EXPECT_EQ(check("doctor --expect-serial 1", 1, "register").value("ok"), false);
    const Emulator ahead({"--clock", "2099-01-01T12:00:00"});
    const QJsonObject clock = check("--port " + ahead.port() + " doctor", 1, "clock");
    EXPECT_TRUE(clock.value("action").toString().contains("time set"));
}

// A drive that cannot be asked is no reason to be silent about the rest.
TEST_P(Told, OfARefusedQuestionIsThatAndAllElse)
{
    const Emulator ill({"--faults", isHex ? "answer:83@9+" : "answer:2.5@5+"});
    QStringList wrong;
    QStringList names;
    for (const QJsonValue check : ask("--port " + ill.port() + " doctor", 1).value("checks").toArray()) {
        names.append(check["name"].toString());
        if (check["ok"] == false)
            wrong.append(names.constLast());
    }
    EXPECT_EQ(names.mid(8), (QStringList{"register", "clock", "drive", "unsent", "paper", "shift"}));
    EXPECT_TRUE(wrong.contains("drive") && !wrong.contains("register")) << wrong.join(' ').toStdString();
}

// It may be in the midst of a receipt.
TEST_P(Told, OfAPortThatAnotherProgramHasIsThatItIsNotAsked)
{
    QProcess holder;
    holder.setStandardInputFile(emulator.port());
    holder.start("sleep", {"60"});
    ASSERT_TRUE(holder.waitForStarted());
    const QJsonValue port = ask("detect", 1).value("ports").toArray().at(0);
    EXPECT_EQ(port["attempts"], QJsonArray());
    EXPECT_EQ(port["holders"].toArray().at(0)["name"], "sleep");
    for (const QJsonValue check : ask("doctor", 1).value("checks").toArray()) {
        const bool isOfRegister = check["name"] == "register";
        EXPECT_TRUE(!isOfRegister || check["text"].toString().contains("sleep"));
    }
    holder.kill();
    holder.waitForFinished();
}

// The schema is held against all of it when the tests of a process have ended.
TEST_P(Told, OfAllElseHasAForm)
{
    QStringList lines{"info", "status", "fn", "ofd", "counters", "registers begin", "registers end",
        "names fields", "names", "names taxes", "names barcode-types", "names error-kinds",
        "check %sale.json %agent-sale.json", "config", "time get", "drawer open", "drawer state",
        "header %header.txt", "params list", "params defaults", "mark 0104600000000015215!Ab1cD\u001D93dGVz",
        "print %text.txt", "open-shift", "sell %marked-sale.json", "journal list", "journal export",
        "journal settle", "journal check", "journal accept", "journal backup ~copy",
        isHex ? "z-report" : "accounting-report", isHex ? "accounting-report" : "z-report", "time set",
        "z-report", "registration --tax-systems osn", "print-document 2", "print-last-document",
        "journal anonymise --before 2200-01-01", "journal check"};
    if (isHex)
        lines += QStringList{"logo --clear", "cancel", "params set 6.0=1", "params get 20"};
    for (const QString& line : lines)
        EXPECT_FALSE(ask(line, line == "cancel" ? 1 : 0).isEmpty() && line != "journal export");
}

TEST(WithoutRegister, ReceiptsComeByAPipeAndSchemasArePrinted)
{
    const QString program = QStringLiteral(FRCTL);
    const Result piped = runShell(QStringLiteral("cat %1/sale.json <(echo) | %2 check - ''")
                                      .arg(QStringLiteral(FRSPF_EXAMPLES), program));
    EXPECT_EQ(piped.status, 2);
    EXPECT_TRUE(piped.output.startsWith(": error: ")) << piped.output.constData();
    EXPECT_TRUE(piped.output.endsWith(
        "\n1 receipt checked: 0 with errors, 0 with warnings\nfiles that have no receipt: 1\n"));
    for (const QString name : {"receipt", "output"}) {
        const QByteArray schema = readAll(QStringLiteral(FRSPF_SOURCES "/docs/%1.schema.json").arg(name));
        EXPECT_EQ(runShell(program + " schema " + name).output, schema);
    }
}

TEST(WithoutRegister, WrongUsageHasAnAnswerForProgramsAlone)
{
    for (const char* const line : {"sell", "z-report", "--port /dev/x cash-in ten"}) {
        const QStringList command = QString(line).split(' ');
        const Result told = runFrctl(command);
        EXPECT_EQ(told.status, 2) << line;
        EXPECT_EQ(told.output, "") << line;
        EXPECT_TRUE(told.errors.contains("Usage: ")) << told.errors.constData();
        EXPECT_TRUE(runFrctl(QStringList{"--json"} + command).output.contains("\"state\":\"notIssued\""));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Protocols, Told, testing::Values("HEX", "XML"), [](const auto& test) { return std::string(test.param); });

} // namespace
