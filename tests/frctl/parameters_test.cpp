#include "abstractregisterparameters.h"
#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "command.h"
#include "errors.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

using hw::fr::RegisterParameter;

RegisterParameter parameter(const QString& name, const QString& caption)
{
    RegisterParameter known;
    known.name = name;
    known.caption = caption;
    return known;
}

/// Tells parameters whose values are their names, but not that of 58.0.
class Settings : public hw::AbstractRegisterParameters
{
public:
    QList<RegisterParameter> knownParameters() const override
    {
        RegisterParameter port = parameter("OFD.OFD.Port", "Гнездо");
        port.type = RegisterParameter::Type::Number;
        port.greatest = 65535;
        RegisterParameter address = parameter("58.0", "Адрес DNS");
        address.greatest = 15;
        RegisterParameter control = parameter("30.0", "Контроль");
        control.type = RegisterParameter::Type::Number;
        control.least = 0;
        control.greatest = 1;
        control.isReadOnly = true;
        return {port, parameter("OFD.OFD.Host", "Хост"), parameter("6.0", "Контроль наличных"),
            parameter("20.0", "Строки клише"), parameter("20.1", "Строки клише"), control,
            parameter("31.0", "Пароль"), parameter("56.0", "IP-адрес прокси-сервера"),
            parameter("57.0", "Порт прокси-сервера"), address};
    }
    QList<RegisterParameter> readParameters(const QStringList& names) override
    {
        asked.append(names.join(','));
        QList<RegisterParameter> read;
        for (const RegisterParameter& known : knownParameters()) {
            if (known.name != "58.0" && (names.isEmpty() || names.contains(known.name)))
                read.append(known);
            if (!read.isEmpty())
                read.last().value = "v\n" + read.constLast().name;
        }
        return read;
    }
    std::optional<FrParameter> assignment(const QString& name, const QString& value) const override
    {
        if (!name.at(0).isDigit())
            return name.contains("OFD") ? std::optional(FrParameter(0, 0, 0, name + '.' + value))
                                        : std::nullopt;
        const QStringList parts = (name + ".0").split('.');
        return FrParameter(1, parts.at(1).toUShort(), parts.at(0).toUShort(), value);
    }

    QStringList asked;
};

/// Keeps what is written; refuses the values "no" and "70000".
class SettingsDriver : public BasicFrDriver
{
public:
    explicit SettingsDriver(BasicFrSettings* ownSettings)
        : BasicFrDriver(nullptr, QStringLiteral("test"), ownSettings)
    {
    }

    bool setParams(const QList<FrParameter>& parameters) override
    {
        for (const FrParameter& parameter : parameters) {
            if (parameter.getValue().endsWith("no") || parameter.getValue().endsWith("70000"))
                return false;
            written.append(QStringLiteral("%1/%2/%3")
                               .arg(parameter.getFieldNum())
                               .arg(parameter.getRowNum())
                               .arg(parameter.getValue()));
        }
        return true;
    }
    bool setDefaults() override { return false; }

    QStringList written;
};

TEST(Params, AreFoundAndWritten)
{
    const QString longLine(45, 'a');
    const struct
    {
        const char* protocol;
        QStringList arguments;
        /// What is written or told, with commas; "usage" and "refusal" for the exceptions.
        QString result;
        /// What is read of the register: names with commas, a semicolon between the exchanges.
        const char* asked = "";
        bool force = false;
        /// Names of those whose text is too long for the register.
        const char* warned = "";
    } rows[] = {
        {"HEX", {"set", "6=1", "20.3=a=b"}, "6/0/1,20/3/a=b"},
        // A whole caption comes before those that are like it.
        {"HEX", {"set", "контроль=1"}, "30/0/1"},
        {"HEX", {"set", "порт=1", "ip=2"}, "57/0/1,56/0/2"},
        {"HEX", {"set", "прокси=1"}, "refusal"},
        {"HEX", {"set", "кофе=1"}, "refusal"},
        {"HEX", {"set", "5=1", "6=no", "30=1"}, "refusal 6.0"},
        {"HEX", {"defaults"}, "4/0/0,5/0/0,6/0/1,8/0/0,11/0/0,13/0/0,30/0/1,38/0/1,40/0/0"},
        {"XML", {"set", "OFD.OFD.Host=no"}, "refusal OFD.OFD.Host"},
        // Over XML all are refused together: some stand out by what the register tells of itself.
        {"XML", {"set", "OFD.a.b=no", "OFD.OFD.Host=1"}, "refusal OFD.a.b"},
        {"XML", {"set", "OFD.OFD.Host=1", "OFD.OFD.Port=70000"}, "refusal OFD.OFD.Port"},
        {"XML", {"set", "OFD.OFD.Host=no", "OFD.OFD.Port=1"}, "refusal OFD.OFD.Host OFD.OFD.Port"},
        {"XML", {"set", "OFD.OFD.OFD_Host=a.b"}, "0/0/OFD.OFD.OFD_Host.a.b"},
        {"XML", {"set", "OFD_Host=a.b"}, "usage"},
        {"HEX", {"set", "20.0=a\nb"}, "check"},
        // The printer has no such quotation marks.
        {"HEX", {"set", "20.0=«Лавка» – №1"}, "20/0/\"Лавка\" - №1"},
        {"XML", {"set", "OFD.OFD.Host=«a»"}, "0/0/OFD.OFD.Host.«a»"},
        {"HEX", {"set", "6"}, "usage"},
        {"HEX", {"reset"}, "usage"},
        {"HEX", {"get", "кофе"}, "refusal"},
        // Single ones are read singly, and told in the order in which they are wanted.
        {"HEX", {"get", "57", "20"},
            "57.0 Порт прокси-сервера: v\\n57.0,20.0 Строки клише: v\\n20.0,20.1 Строки клише: v\\n20.1",
            "57.0,20.0,20.1"},
        {"HEX", {"get", "58.0"}, "refusal", "58.0"},
        {"HEX", {"set", "6=1", "031=ABCD"}, "usage"},
        {"HEX", {"set", "6=1", "пароль=ABCD"}, "usage"},
        {"HEX", {"set", "пароль=ABCD"}, "31/0/ABCD", "", true},
        {"HEX", {"get", "31"}, "31.0 Пароль: ****", "31.0"},
        {"HEX", {"set", "20=" + longLine, "6=" + longLine, "58=10.10.10.10.10.10"},
            "20/0/" + longLine + ",6/0/" + longLine + ",58/0/10.10.10.10.10.10", "", false, "20,6,58"},
        {"XML", {"set", "OFD.OFD.Host=" + longLine}, "0/0/OFD.OFD.Host." + longLine},
    };
    for (const auto& row : rows) {
        BasicFrSettings driverSettings;
        SettingsDriver driver(&driverSettings);
        Settings settings;
        Options options;
        options.protocol = row.protocol;
        options.command = "params";
        options.arguments = row.arguments;
        options.force = row.force;
        QString result;
        try {
            const Output output = findCommand(options).prepare(options).onParameters(driver, settings);
            result = driver.written.isEmpty() ? output.lines.join(',') : driver.written.join(',');
        } catch (const UsageError&) {
            result = "usage";
        } catch (const CheckError&) {
            result = "check";
        } catch (const Refusal& refusal) {
            result = (QStringList("refusal") + refusal.refused()).join(' ');
        }
        EXPECT_EQ(result, row.result) << row.arguments.join(' ').toStdString();
        EXPECT_EQ(settings.asked.join(';'), row.asked) << row.arguments.join(' ').toStdString();
        QStringList warned;
        for (const QJsonValue& warning : options.warnings->json())
            warned.append(warning["path"].toString());
        EXPECT_EQ(warned.join(','), row.warned);
    }
}

TEST(Params, AreListedWithWhatTheyTake)
{
    Settings settings;
    BasicFrSettings driverSettings;
    SettingsDriver driver(&driverSettings);
    Options options;
    options.protocol = "HEX";
    options.command = "params";
    options.arguments = {"get", "30"};
    const Output output = findCommand(options).prepare(options).onParameters(driver, settings);
    EXPECT_EQ(QJsonDocument(output.json).toJson(QJsonDocument::Compact),
        R"({"parameters":[{"caption":"Контроль","greatest":1,"id":"30.0","least":0,"readOnly":true,)"
        R"("type":"number","value":"v\n30.0"}]})");
}

} // namespace
