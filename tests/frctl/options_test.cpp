#include "commandline.h"
#include "help.h"
#include "optiontable.h"
#include "schemas.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

TEST(Options, AreRead)
{
    const Options options
        = parse("--port tcp:register:7 --protocol HEX --protocol-version 12.0 --plugin a "
                "--plugin b --device-id 19 --option 0x10=off --option 4=on --cashier Иванова "
                "--cashier-inn 772100000040 --log-level trace --json "
                "--no-speed-enumeration time set 2024-12-31T23:59:59");
    EXPECT_EQ(options.port, QStringLiteral("tcp:register:7"));
    EXPECT_EQ(options.protocol, QStringLiteral("HEX"));
    EXPECT_EQ(options.protocolVersion, QStringLiteral("12.0"));
    EXPECT_EQ(options.plugins.size(), 2);
    EXPECT_EQ(options.deviceId, 19U);
    EXPECT_FALSE(options.speedEnumerate);
    EXPECT_EQ(options.driverOptions,
        (hw::fr::DriverOptions{{hw::fr::OptionUseFn, false}, {hw::fr::OptionBit2, true}}));
    EXPECT_EQ(options.cashier.name, QStringLiteral("Иванова"));
    EXPECT_EQ(options.cashier.inn, QStringLiteral("772100000040"));
    EXPECT_EQ(options.logLevel, Options::Trace);
    EXPECT_TRUE(options.json);
    EXPECT_EQ(options.command, QStringLiteral("time"));
    EXPECT_EQ(options.arguments.size(), 2);
    EXPECT_EQ(parse("status").protocol, QStringLiteral("XML"));
    // They stand anywhere and are no arguments.
    EXPECT_EQ(parse("status --protocol=hex").protocol, QStringLiteral("HEX"));
    EXPECT_TRUE(parse("sell -h").help && parse("-v").version);
    EXPECT_EQ(parse("sell --split - -5 -.5 -- --json").arguments, (QStringList{"-", "-5", "-.5", "--json"}));
}

TEST(Options, NameARegisterOfAService)
{
    const std::pair<const char*, const char*> rows[] = {{"service:till1", "http://127.0.0.1:8403"},
        {"service://localhost:9000/till1", "http://localhost:9000"},
        {"service://[::1]/till1", "http://[::1]:8403"},
        // Nobody's token goes over an open line because a word was left out.
        {"service://shop.example/till1", "https://shop.example:8403"},
        {"service:https://shop.example/fiscal/till1", "https://shop.example/fiscal"}, {"service:", nullptr},
        {"service:till 1", nullptr}, {"service:ftp://shop/till1", nullptr}, {"service:///till1", nullptr},
        {"service://shop/till2/../till1", nullptr}, {"service://shop/%2e%2E/till1", nullptr},
        {"service:https://shop/./till1", nullptr}, {"service:https://shop//till1", nullptr},
        {"service://user@shop/till1", nullptr}, {"service://shop:99999/till1", nullptr}};
    for (const auto& [name, service] : rows) {
        const std::optional<ServicePort> port = servicePortOf(name);
        ASSERT_EQ(port.has_value(), service != nullptr) << name;
        if (port) {
            EXPECT_EQ(port->service.toString(), QString(service)) << name;
            EXPECT_EQ(port->registerName, QStringLiteral("till1"));
        }
    }
}

// What help shows must be true.
TEST(Commands, ExamplesAreRightAndHelpTellsTheOptions)
{
    for (const Command& command : commands()) {
        const Options options = parseOptions(
            QProcess::splitCommand(QStringLiteral("frctl ") + QString::fromUtf8(command.example)));
        EXPECT_EQ(&findCommand(options), &command) << command.example;
        const QString help = helpText(command.name);
        EXPECT_TRUE(help.contains(command.example)) << command.name;
        for (const QString& name : QString(command.options).split(' ', Qt::SkipEmptyParts)) {
            EXPECT_NE(findOption(name), nullptr) << name.toStdString();
            EXPECT_TRUE(help.contains("--" + name)) << name.toStdString();
        }
        EXPECT_EQ(help.contains("  5  "), command.makesDocument()) << command.name;
        EXPECT_TRUE(help.contains("--wait") || command.kind == Command::Alone) << command.name;
    }
    EXPECT_FALSE(helpText("status").contains("--drop"));
    EXPECT_TRUE(helpText("trace").contains("replay FILE --as register PORT"));
}

TEST(Commands, HelpHasTheReceiptThatTheSchemaHas)
{
    const QJsonValue example
        = QJsonDocument::fromJson(schemaText(QStringLiteral("receipt"))).object()["examples"][0];
    for (const char* const name : {"sell", "refund", "check", "preview"}) {
        const QString help = helpText(name);
        const qsizetype start = help.indexOf("\n{\n");
        QJsonObject shown
            = QJsonDocument::fromJson(help.mid(start, help.indexOf("\n}\n") + 2 - start).toUtf8()).object();
        EXPECT_EQ(shown["type"], qstrcmp(name, "refund") == 0 ? "sellReturn" : "sell");
        shown["type"] = "sell";
        EXPECT_EQ(shown, example.toObject()) << help.toStdString();
    }
}

// Help, completion and what is done have a table each.
TEST(Commands, DoWhatTheirHelpSays)
{
    for (const QString command : {"journal", "trace"}) {
        for (const QString& action : findCommand(command)->actions()) {
            const QString line = command + ' ' + action;
            const std::string few = usageError(line);
            const std::string many = usageError(line + " a b");
            const std::string told = "wrong number of arguments: " + line.toStdString();
            EXPECT_TRUE(few.starts_with(told) || many.starts_with(told)) << few << many;
        }
    }
}

TEST(Options, MistakesAreToldBeforeAnythingIsOpened)
{
    const std::pair<const char*, const char*> rows[] = {{"--color status", "unknown option --color"},
        {"status --jsn", "unknown option --jsn; did you mean --json?"},
        {"-json status", "unknown option -json; did"}, {"status --json=1", "--json takes no value"},
        {"--port", "--port needs PORT"}, {"status --port --json", "--port needs PORT"},
        {"--protocol hax status", "--protocol:"}, {"--device-id 20 status", "--device-id:"},
        {"--device-id x status", "--device-id:"}, {"--wait 1.5 status", "--wait:"},
        {"--wait -1 status", "--wait:"}, {"--option 16 status", "--option:"},
        {"--option 3=on status", "--option:"}, {"--option 4=yes status", "--option:"},
        {"--log-level all status", "--log-level:"}, {"", "no command"},
        {"sel a", "no command \"sel\"; did you mean sell?"},
        {"stauts", "no command \"stauts\"; did you mean status?"},
        {"chcek a", "no command \"chcek\"; did you mean check?"},
        {"chekc a", "no command \"chekc\"; did you mean check?"},
        {"tarce a", "no command \"tarce\"; did you mean trace?"},
        {"help trace reply", "no command \"trace reply\"; did you mean replay?"},
        {"status --port /dev/x --port /dev/y", "--port is given twice: /dev/x and /dev/y"},
        {"status --register a --register b", "--register is given twice"},
        {"--json --png - preview a", "--json and --png - both"},
        {"help stauts", "no command \"stauts\"; did"}, {"sell", "sell takes FILE"},
        {"status now", "status takes no arguments"}, {"drawer shut", "drawer:"}, {"time set noon", "time:"},
        {"time get 5", "time takes"}, {"cash-in -5", "cash-in: \"-5\" is not above zero"},
        {"cash-in 0", "cash-in: \"0\" is not above"}, {"cash-out 1.005", "cash-out: \"1.005\" has parts"},
        {"cash-in ten", "cash-in: \"ten\" is not a sum"},
        {"cash-in 1000000000", "cash-in: \"1000000000\" is more"},
        {"cash-in 1e3", "cash-in: \"1e3\" is not a sum"}, {"cash-in +5", "cash-in: \"+5\" is not a sum"},
        {"sell no-such-file", "no-such-file:"}, {"sell /dev/zero", "/dev/zero: has more than 64 MiB"},
        {"preview /dev/zero", "/dev/zero: has more"}, {"print /dev/zero", "/dev/zero: has more"},
        {"print no-such-file", "no-such-file:"}, {"registers now", "registers:"},
        {"print-document 0", "print-document:"}, {"registration", "registration needs --tax-systems"},
        {"registration --tax-systems osn,vat", "--tax-systems: \"vat\" is none of osn"},
        {"status --tax-systems osn", "--tax-systems goes with registration"},
        {"--id 42 cash-in 5", "--id goes with sell and refund"},
        {"--id= sell no-such-file", "--id: is empty"}, {"--id a\x1F sell a", "--id: has the control"},
        {"fn --clear", "--clear goes with logo"}, {"--split cash-in 5", "--split goes with sell"},
        {"--drop type status", "--drop goes with"}, {"--marks any mark 01046", "--marks goes with"},
        {"--marks some sell a", "--marks:"}, {"--cashier a\x7F status", "--cashier: has the control"},
        {"--cashier \u00A0 status", "--cashier: has nothing but"},
        {"--cashier-inn 771234567890 status", "--cashier-inn:"}, {"--cashier-inn= status", "--cashier-inn:"},
        {"--expect-inn 77012345678 status", "--expect-inn:"},
        {"mark 46000002\x1B", "mark: \"46000002<1B>\" has the control character U+001B"},
        {"mark 0104600000000015215!Ab1cD93dGVz",
            "mark: \"0104600000000015215!Ab1cD93dGVz\" has lost its group"},
        {"mark КГ-430302-ФИС1234567", "mark: \"КГ-430302-ФИС1234567\" was scanned in the Russian"},
        {"mark 01046", "mark: \"01046\" is no marking code"},
        {"--strict mark 0104600000000015215!Ab1cD",
            "mark: \"0104600000000015215!Ab1cD\" has none of the fields"},
        {"--width 52 preview a", "--width: \"52\" is neither"}, {"--svg a sell b", "--svg goes with preview"},
        {"--png a --pdf b preview c", "preview makes one of"}, {"--png= preview c", "--png: wants a file"},
        {"--id 12345678 preview c", "--id goes with"},
        {"--strict --marks any sell a", "--strict contradicts"},
        {"--marks warn --strict sell a", "--strict contradicts"},
        {"--force status", "--force goes with time and params"},
        {"params list --force", "--force goes with params set"},
        {"journal lst", "no command \"journal lst\"; did you mean list?"},
        {"journal resolve 1",
            "wrong number of arguments: journal resolve ID issued --document N | journal resolve"},
        {"trace show a --force", "trace show takes no --force"},
        {"trace show " FRSPF_EXAMPLES "/sale.json", FRSPF_EXAMPLES "/sale.json: line 1: is not the head"},
        {"trace show no-such-file", "no-such-file:"}, {"trace look x", "no command \"trace look\""},
        {"trace replay " FRSPF_TRACE " /tmp/x", "trace replay: --as is register or host"},
        {"trace replay " FRSPF_TRACE " --as till /tmp/x", "trace replay: --as is register or host"},
        {"trace replay " FRSPF_TRACE " --as register --port /tmp/x", "trace replay: no port"},
        {"help trace look", "no command \"trace look\""}, {"status --as host", "--as goes with trace"},
        {"status --trace-full", "--trace-full goes with --trace"},
        {"time get --force", "--force goes with time set"},
        {"--protocol HEX params set 31=ABCD", "params set: 31 is the password"},
        {"names colours", "names: \"colours\""}, {"schema sale", "schema: \"sale\""},
        {"check", "check takes FILE"}, {"--marks any check a", "--marks goes with sell"},
        {"logo", "logo takes"}, {"params", "params takes list|get"}, {"logo no-such-file", "no-such-file:"},
        {"header no-such-file", "no-such-file:"}, {"--exclusive maybe status", "--exclusive:"},
        {"cash-in 5", "cash-in needs a cashier"}, {"x-report", "x-report needs a cashier"}};
    for (const auto& [line, error] : rows)
        EXPECT_EQ(usageError(line).rfind(error, 0), 0U) << line << ": " << usageError(line);
    for (const char* line : {"--cashier И cash-in 100.50", "drawer state", "time set", "mark 46000002",
             "info --json --json --plugin a --plugin b", "--lang en --lang en status",
             "--protocol HEX cancel", "--cashier И registration --tax-systems osn,patent",
             "--protocol HEX logo --clear", "params get 20 6.0", "help sell", "help"})
        EXPECT_EQ(usageError(line), "") << line;
}

TEST(Options, WhatXmlCannotDoIsRefused)
{
    for (const char* line : {"cancel", "logo --clear", "tail " FRSPF_EXAMPLES "/header.txt"})
        EXPECT_THROW(usageError(line), Refusal) << line;
}

/// A file with that text, and what a command makes of it: "usage" and "check" for the exceptions, otherwise
/// what is warned of.
class Texts : public testing::Test
{
protected:
    QString said(const char* command, const QByteArray& bytes, const char* options)
    {
        QFile file(folder.filePath("text"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        Options parsed = parse(options);
        parsed.command = command;
        parsed.arguments = {file.fileName()};
        try {
            findCommand(parsed).prepare(parsed);
        } catch (const UsageError& error) {
            return QStringLiteral("usage ") + error.what();
        } catch (const CheckError& error) {
            return QStringLiteral("check ") + error.errors().constFirst().path;
        }
        QStringList paths;
        for (const QJsonValue& warning : parsed.warnings->json())
            paths.append(warning["path"].toString());
        return paths.join(',');
    }

    const QTemporaryDir folder;
};

TEST_F(Texts, AreCheckedBeforeTheyAreSent)
{
    const QByteArray withMark = QByteArray("\xEF\xBB\xBF") + "a\r\n\r\nb\r\n";
    const QByteArray longLine = "a\n" + QByteArray("я").repeated(45);
    const QByteArray sale
        = R"({"type": "sell", "payments": [{"type": "cash", "sum": 1}], "items": [{"name": "a",
        "price": 1, "quantity": 1, "amount": 1, "tax": {"type": "none"}}], "operator": {"name": ")"
        + QByteArray("я").repeated(49) + R"(", "vatin": "772100000041"}})";
    const std::tuple<const char*, QByteArray, const char*, const char*> rows[] = {{"print", withMark, "", ""},
        {"print", "a\xCF\xF0", "", "usage .*offset 1.*"}, {"print", "a\n\x1B[2J", "", "check .*text:2"},
        {"print", "a\tb", "", "check .*text:1"},
        {"print", "«Лавка»\n☕ 5 ₽", "--protocol HEX", ".*text:2"},
        {"print", "«Лавка»\n☕ 5 ₽", "--protocol HEX --strict", "check .*text:2"},
        {"print", "☕", "--strict", ""}, {"print", "a\n‼?081041", "", "check .*text:2"},
        {"print", "‼?081041", "--protocol HEX", ".*text:1"}, {"print", longLine, "--protocol HEX", ""},
        {"header", longLine, "--protocol HEX", "[^,]*text:2"}, {"header", longLine, "", ""},
        {"tail", "☕\n" + longLine.mid(2), "--protocol HEX", ".*text:1,.*text:2"},
        {"sell", "{}\n{}\n", "", "usage .*has several receipts.*"},
        {"preview", "{}\n{}\n", "", "usage .*has several receipts.*"}, {"sell", sale, "", "operator.vatin"},
        {"sell", sale, "--protocol HEX", "operator.name,operator.vatin"},
        // What is said of a cashier whom the command line replaces is of no matter.
        {"sell", sale, "--protocol HEX --strict --cashier Иванова", ""},
        {"sell", sale, "--protocol HEX --cashier-inn 772100000040", "operator.name"}};
    for (const auto& [command, bytes, options, pattern] : rows) {
        const QString result = said(command, bytes, options);
        const QRegularExpression expected(QRegularExpression::anchoredPattern(pattern));
        EXPECT_TRUE(expected.match(result).hasMatch()) << bytes.toStdString() << result.toStdString();
    }
}

} // namespace
