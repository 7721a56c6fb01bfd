#include "programs.h"

#include "answers.h"

#include "portlock.h"
#include "serialportdevice.h"

#include <emulator/register/codepage.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>

#include <gtest/gtest.h>

#include <csignal>

namespace {

QString example(const char* name)
{
    return QStringLiteral(FRSPF_EXAMPLES "/") + QLatin1String(name);
}

QStringList words(const QString& line)
{
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

Result run(const Emulator& emulator, const QString& protocol, const QStringList& command,
    const QString& options = {})
{
    return runFrctl(words("--protocol " + protocol + " --port " + emulator.port() + ' ' + options) + command);
}

QStringList typesOf(const QList<QJsonObject>& journal)
{
    QStringList types;
    for (const QJsonObject& document : journal)
        types.append(document.value("type").toString());
    return types;
}

/// A register and the protocol over which it is worked.
class Day : public testing::TestWithParam<const char*>
{
protected:
    /// Runs the command, which must end well and say the text.
    void expect(const QStringList& command, const QByteArray& text)
    {
        const Result result = run(emulator, protocol, command);
        EXPECT_EQ(result.status, 0) << command.join(QLatin1Char(' ')).toStdString() << ": "
                                    << result.errors.constData();
        EXPECT_TRUE(result.output.contains(text)) << result.output.constData();
    }

    QJsonObject json(const QString& command)
    {
        const Result result = run(emulator, protocol, words(command), "--json");
        EXPECT_EQ(result.status, 0) << result.errors.constData();
        return result.json();
    }

    Emulator emulator;
    const QString protocol = QString::fromUtf8(GetParam());
};

double sumOf(const QJsonObject& counters, const char* type)
{
    double sum = 0;
    for (const QJsonValue& value : counters.value(QLatin1String(type)).toObject())
        sum += value.toDouble();
    return sum;
}

TEST_P(Day, CountersAddUpWithWhatWasSold)
{
    expect({"status"}, "shift: closed");
    expect({"open-shift"}, "shift opened");
    expect({"open-shift"}, "open already");
    expect(words("cash-in 1000"), "cash in: 1000.00");
    expect({"sell", example("sale.json")}, "total 305.23, paid 500.00, change 194.77");
    expect({"sell", example("marked-sale.json")}, "marking code 0104600000000015");
    expect({"refund", example("return.json")}, "total 64.90");
    expect({"x-report"}, "X report printed");
    const QJsonObject counters = json("counters");
    const QJsonObject sales = counters.value("sell").toObject();
    EXPECT_DOUBLE_EQ(sales.value("cash").toDouble(), 305.23 + 85.0);
    EXPECT_DOUBLE_EQ(sales.value("electronically").toDouble(), 300.0);
    EXPECT_DOUBLE_EQ(sumOf(counters, "sell"), 690.23);
    EXPECT_DOUBLE_EQ(sumOf(counters, "sellReturn"), 64.9);
    EXPECT_EQ(counters.value("cashIn").toObject(), (QJsonObject{{"count", 1}, {"sum", 1000.0}}));

    expect(words("cash-out 200.50"), "cash out: 200.50");
    const QJsonArray registers = json("registers end").value("registers").toArray();
    const auto value
        = [&](int position) { return registers.at(position).toObject().value("value").toDouble(); };
    EXPECT_DOUBLE_EQ(value(1), 1000.0 + 390.23 - 64.9 - 200.5);
    EXPECT_EQ(value(3), 2);
    EXPECT_EQ(value(11), 1);
    EXPECT_DOUBLE_EQ(value(27), 200.5);
    expect({"z-report"}, "shift closed");
    expect({"z-report"}, "closed already");
    const QJsonObject after = json("counters");
    EXPECT_EQ(sumOf(after, "sell") + sumOf(after, "sellReturn"), 0);
    EXPECT_EQ(after.value("cashOut").toObject().value("sum").toDouble(), 0);
    EXPECT_FALSE(json("status").value("shiftOpen").toBool());
    EXPECT_EQ(typesOf(emulator.journal()).filter("sell"), (QStringList{"sell", "sell", "sellReturn"}));
    const QJsonObject told = emulator.stop();
    EXPECT_GT(told.value("exchanges").toInt(), 30);
    EXPECT_EQ(told.value("refusals").toArray(), QJsonArray());
    EXPECT_EQ(told.value("warnings").toArray(), QJsonArray());
}

TEST_P(Day, SettingsAndTextsReachTheRegister)
{
    expect({"registration", "--tax-systems", "osn,usnIncome"}, "registered: ОСН, УСН доход");
    const qint64 last = json("fn").value("lastDocument").toInteger();
    expect({"print-document", QString::number(last)}, "printed");
    expect({"print-last-document"}, "printed");
    expect({"header", example("header.txt")}, "lines programmed");
    expect({"print", example("text.txt")}, "4 lines printed");
    expect(words("drawer open"), "drawer opened");
    expect(words("drawer state"), "open");
    expect(words("time get"), "20");
    expect(words("mark 0104600000000015215!Ab1cD\u001D93dGVz"), "result of the check");
    const QString tape = emulator.tape();
    // The HEX driver writes settings in UTF-8, and the register has them in its own code page.
    const QString header = "Продукты на Примерной";
    for (const QString& text :
        {protocol == "HEX" ? emulator::codepage::toText(header.toUtf8()) : header, QString("магазин закрыт")})
        EXPECT_TRUE(tape.contains(text)) << text.toStdString();
    EXPECT_EQ(tape.count("ОТЧЕТ ОБ ИЗМЕНЕНИИ РЕГИСТРАЦИИ"), 3);
}

// A code without its proof, and a piece that is sold twice.
TEST_P(Day, BadGoodsAreNotSoldAndPiecesNotTwiceUnnoticed)
{
    const QTemporaryDir folder;
    const auto changed = [&folder](const QString& name, const QByteArray& from, const QByteArray& to) {
        return written(folder, name, readAll(example("marked-sale.json")).replace(from, to));
    };
    const QString bad = changed("bad.json", "\\u001d93dGVz", "");
    const QString options = "--json --journal " + folder.filePath("sales");
    // Status and kind, and in which part of the answer something is told.
    const std::tuple<QString, QString, int, const char*, const char*, const char*> rows[] = {
        {changed("malformed.json", "vat10", "vat"), "", 2, "data", "findings", "\"given\": \"vat\""},
        {bad, "", 1, "mark", "bits", "key wrong"},
        {example("marked-sale.json"), "", 0, "", "warnings", "not checked on line"},
        {example("marked-sale.json"), "--strict", 2, "data", "findings", "sold on"},
        {example("marked-sale.json"), "--marks strict", 1, "mark", "findings", "not checked on line"},
        {bad, "--marks any", 0, "", "warnings", "found bad"},
    };
    for (const auto& [file, more, status, kind, key, part] : rows) {
        const Result result = run(emulator, protocol, {"sell", file}, options + ' ' + more);
        EXPECT_EQ(result.status, status) << result.errors.constData();
        const QJsonObject json = result.json();
        const QJsonObject error = json.value("error").toObject();
        const QByteArray told = QJsonDocument((status == 0 ? json : error).value(key).toArray()).toJson();
        EXPECT_TRUE(told.contains(part)) << part << result.output.constData();
        EXPECT_EQ(error.value("kind").toString(), QLatin1String(kind));
        EXPECT_EQ(json.value("state"), status == 0 ? "issued" : "notIssued");
    }
    EXPECT_EQ(typesOf(emulator.journal()).filter("sell").size(), 2);
}

TEST_P(Day, ParametersAreListedAndWritten)
{
    const bool isHex = protocol == "HEX";
    const QJsonArray entries = json("params list").value("parameters").toArray();
    ASSERT_EQ(entries.size(), isHex ? 76 : 51);
    QSet<QString> ids;
    for (const QJsonValue& entry : entries) {
        EXPECT_FALSE(entry["caption"].toString().isEmpty());
        ids.insert(entry["id"].toString());
    }
    EXPECT_EQ(ids.size(), entries.size());
    expect(words(isHex ? "params set 6.0=1 5=0" : "params set OFD.OFD.OFD_Host=a.b OFD.OFD.OFD_Port=7"), "");
    expect(words(isHex ? "params get наличных логотип" : "params get OFD.OFD.OFD_Host OFD.OFD.OFD_Port"),
        isHex ? "6.0 Контроль наличных: 1\n5.0 Логотип компании: 0\n"
              : "OFD.OFD.OFD_Host Хост ОФД: a.b\nOFD.OFD.OFD_Port Порт ОФД: 7\n");
    const QString refused = isHex ? "params set 8=1 50=1 5=1" : "params set OFD.OFD.OFD_Port=8 OFD.OFD.No=1";
    const Result refusal = run(emulator, protocol, words(refused), "--json");
    EXPECT_EQ(refusal.status, 1);
    EXPECT_EQ(refusal.json().value("error")["refused"].toArray(), QJsonArray{isHex ? "50.0" : "OFD.OFD.No"})
        << refusal.errors.constData();
    expect(words(isHex ? "params get 8 5" : "params get OFD.OFD.OFD_Port"),
        isHex ? "8.0 Автоматическая инкассация: 1\n5.0 Логотип компании: 0\n" : ": 7\n");
    expect(words("params defaults"), "defaults written");
}

INSTANTIATE_TEST_SUITE_P(
    Protocols, Day, testing::Values("HEX", "XML"), [](const auto& test) { return std::string(test.param); });

TEST(Frctl, FailureIsToldAndLeavesThePortClosed)
{
    const std::tuple<const char*, QStringList, int, const char*> rows[] = {
        {"--faults silence@1+", {"status"}, 1, "Нет связи с ФР"},
        {"", {"sell", example("text.txt")}, 2, "line 1: "},
        {"", {"refund", example("sale.json")}, 2, "type: is no return"},
        {"", {"x-report", "--strict", "--cashier", QString(49, QChar(u'я'))}, 2, "--cashier: \"яя"},
        {"", {"sell", example("sale.json"), "--strict", "--cashier", QString(49, QChar(u'я'))}, 2,
            "--cashier: \"яя"},
        {"", {"cash-out", "5000"}, 4, "frctl: Отрицательный результат\n"},
        {"--paper-out", {"print", example("text.txt")}, 1, "умаг"},
    };
    for (const auto& [settings, command, status, errors] : rows) {
        SCOPED_TRACE(errors);
        const Emulator emulator(words(settings));
        const Result result = run(emulator, "HEX", command, "--log-level info --json");
        EXPECT_EQ(result.status, status);
        EXPECT_TRUE(result.errors.contains(errors)) << result.errors.constData();
        EXPECT_EQ(result.errors.count("likely causes: "), QByteArray(settings).count("silence"));
        EXPECT_EQ(result.errors.contains("frctl: the document was not issued"), status == 4);
        const bool wasOpened = result.errors.contains("Порт открыт");
        EXPECT_EQ(wasOpened, status != 2);
        EXPECT_EQ(result.errors.contains("Порт закрыт"), wasOpened);
        const QJsonObject json = result.json();
        EXPECT_FALSE(json.value("error")["text"].toString().isEmpty()) << result.output.constData();
        EXPECT_TRUE(emulator.journal().isEmpty() || status != 2);
        EXPECT_TRUE(devices::SerialPortDevice(emulator.port()).open());
    }
}

TEST(Frctl, InterruptionClosesThePort)
{
    const std::tuple<const char*, const char*, const char*> rows[]
        = {{"--faults silence@1+", "status", "Соединение с устройством"},
            {"", "params list", "Получение параметра 2 0"}};
    for (const auto& [faults, command, after] : rows) {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
            const Emulator emulator(words(faults));
            const Result result = interruptFrctl(words("--protocol HEX --log-level debug --port "
                                                     + emulator.port() + ' ' + QLatin1String(command)),
                after, signal);
            EXPECT_EQ(result.status, 130) << command << signal;
            EXPECT_TRUE(result.errors.contains("Порт закрыт")) << result.errors.constData();
        }
    }
}

TEST(Frctl, LeftoversOnTheLineAreDropped)
{
    // A tail that lasts for half a second; an answer in pieces with pauses of 50 ms after a run that was
    // killed.
    for (const char* const options : {"--baud 115200", "--faults split:40@1"}) {
        const Emulator emulator(words(options));
        QFile line(emulator.port());
        ASSERT_TRUE(line.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        devices::PortLock lock;
        EXPECT_TRUE(lock.take(emulator.port()));
        if (QByteArray(options).contains("baud"))
            lock.leaveIdle();
        lock.release();
        line.write(QByteArrayLiteral("<ArmRequest></ArmRequest>").repeated(10));
        const Result result = run(emulator, "XML", words("time get"));
        EXPECT_EQ(result.status, 0) << options << result.errors.constData();
    }
}

// Also where the program was started without standard streams: the line must not become one of them.
TEST(Frctl, OutputThatNobodyTakesIsAnErrorAndNoLostSale)
{
    const std::tuple<const char*, const char*, int, const char*> rows[]
        = {{"status", ">/dev/full", 1, "frctl: standard output: "},
            {"--help", ">/dev/full", 1, "frctl: standard output: "},
            {"open-shift", ">/dev/full", 1, "document 2: the document was issued; do not repeat it"},
            {"sell " FRSPF_EXAMPLES "/sale.json", ">/dev/full", 1, "the document was issued"},
            {"--log-level trace --json cash-in 5", ">&3 2>&3", 1, ""},
            {"status", ">&-", 1, "frctl: standard output: "},
            {"--log-level trace status", "<&- >&- 2>&-", 1, ""}};
    const Emulator emulator;
    for (const auto& [command, streams, status, errors] : rows) {
        const QString redirection = QLatin1String(streams);
        // Descriptor 3 is a pipe whose reader has gone.
        const QString script = QStringLiteral("exec 3> >(true); wait $!; " FRCTL " --plugin " SPF_PLUGIN
                                              " --cashier И --protocol HEX --port %1 %2 %3")
                                   .arg(emulator.port(), QLatin1String(command), redirection);
        const Result result = runShell(script);
        EXPECT_EQ(result.status, status) << command << streams << result.errors.constData();
        EXPECT_TRUE(result.errors.contains(errors)) << result.errors.constData();
    }
    EXPECT_EQ(typesOf(emulator.journal()), (QStringList{"openShift", "sell", "cashIn"}));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    // Marked goods are kept in the user's journal where no other is named.
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    QLoggingCategory::setFilterRules("frdriver.*=false");
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new Answers);
    return RUN_ALL_TESTS();
}
