#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "command.h"
#include "errors.h"
#include "parameterlist.h"
#include "stringutils.h"

#include <gtest/gtest.h>

using namespace frctl;

namespace {

constexpr int Width = 48;

struct Row
{
    const char* left;
    const char* value;
    const char* id;
    const char* caption;
};

QStringList printout(const QList<Row>& rows)
{
    QStringList lines{QStringLiteral("--- Параметры устройства ---"), QString(Width, QLatin1Char('-'))};
    for (const Row& row : rows)
        lines += stringutils::wrappedString(QString::fromUtf8(row.left), QString::fromUtf8(row.value), Width);
    return lines;
}

void expectEntries(const QList<ParameterEntry>& entries, const QList<Row>& rows)
{
    ASSERT_EQ(entries.size(), rows.size());
    for (qsizetype index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(entries.at(index).id, QString::fromUtf8(rows.at(index).id));
        EXPECT_EQ(entries.at(index).caption, QString::fromUtf8(rows.at(index).caption));
        EXPECT_EQ(entries.at(index).value, QString::fromUtf8(rows.at(index).value));
    }
}

TEST(ParameterList, ReadsValuesOutOfAHexPrintout)
{
    const QList<Row> rows{
        {"6.0 Контроль наличных", "0", "6.0", "Контроль наличных"},
        {"20.0 ", "ООО РОМАШКА И СЫН", "20.0", "Строки клише"},
        {"20.1 ", "", "20.1", "Строки клише"},
        {"25.0 Строка для печати перед налогами в чеке", "", "25.0",
            "Строка для печати перед налогами в чеке"},
        {"62.0 Хост сервера", "0123456789-0123456789.example", "62.0", "Хост сервера"},
        {"64.0 URL сайта ФНС", "0123456789-0123456789-0123456789-0123456789-0123456789", "64.0",
            "URL сайта ФНС"},
        {"67.0 Тип транспорта с управляющим компьютером(хостом)", "1", "67.0",
            "Тип транспорта с управляющим компьютером(хостом)"},
    };
    QStringList lines = printout(rows);
    lines.insert(3, QStringLiteral("20. Строки клише"));
    expectEntries(readHexDescription(lines, Width), rows);
}

TEST(ParameterList, ReadsValuesOutOfAnXmlPrintout)
{
    const QList<Row> rows{
        {"* Установка времени ККТ в открытой смене", "false", "MACRO.EMERGENCY.EmergencyRTCSet",
            "Установка времени ККТ в открытой смене"},
        {"* Возвращать накопительные итоги в ответах на запросы счётчиков", "true",
            "MACRO.KKTCounters.GetCumulativeCounters",
            "Возвращать накопительные итоги в ответах на запросы счётчиков"},
        {"* Порт ОФД", "7777", "OFD.OFD.OFD_Port", "Порт ОФД"},
        {"* Логин", "", "POS.Proxy.User", "Логин"},
        {"* Клише", "ООО РОМАШКА\nМосква, Примерная ул., 1", "PRN.PrinterHeader.Cliche", "Клише"},
        {"* Новая настройка", "", "", "Новая настройка"},
    };
    QStringList lines = printout(rows);
    lines.insert(2, QStringLiteral("-----Настройки печати-----"));
    lines.insert(4, QStringLiteral("Параметры печати чека"));
    expectEntries(readXmlDescription(lines, Width), rows);
}

/// Keeps what is written; refuses the value "no".
class SettingsDriver : public BasicFrDriver
{
public:
    explicit SettingsDriver(BasicFrSettings* ownSettings)
        : BasicFrDriver(nullptr, QStringLiteral("test"), ownSettings)
    {
        deviceInfo.setBandInfo(Width, 4, 2, 0);
    }

    QStringList getParametersDescription() override
    {
        ++printouts;
        return printout({{"6.0 Контроль наличных", "0", "", ""}, {"30.0 Контроль", "1", "", ""},
            {"56.0 IP-адрес прокси-сервера", "1", "", ""}, {"57.0 Порт прокси-сервера", "1", "", ""}});
    }
    bool setParams(const QList<FrParameter>& parameters) override
    {
        for (const FrParameter& parameter : parameters) {
            if (parameter.getValue() == QStringLiteral("no"))
                return false;
            written.append(QStringLiteral("%1/%2/%3")
                               .arg(parameter.getFieldNum())
                               .arg(parameter.getRowNum())
                               .arg(parameter.getValue()));
        }
        return true;
    }

    QStringList written;
    int printouts = 0;
};

TEST(Params, AreFoundAndWritten)
{
    const struct
    {
        const char* protocol;
        QStringList arguments;
        /// What is written, with commas; "usage" and "refusal" for the exceptions.
        const char* result;
        int printouts = 0;
    } rows[] = {
        {"HEX", {"set", "6=1", "20.3=a=b"}, "6/0/1,20/3/a=b"},
        // A whole caption comes before those that are like it.
        {"HEX", {"set", "контроль=1"}, "30/0/1", 1},
        {"HEX", {"set", "порт=1", "ip=2"}, "57/0/1,56/0/2", 1},
        {"HEX", {"set", "прокси=1"}, "refusal", 1},
        {"HEX", {"set", "кофе=1"}, "refusal", 1},
        {"HEX", {"set", "6=no"}, "refusal"},
        {"XML", {"set", "OFD.OFD.OFD_Host=a.b"}, "0/0/OFD.OFD.OFD_Host.a.b"},
        {"XML", {"set", "OFD_Host=a.b"}, "usage"},
        {"HEX", {"set", "20.0=a\nb"}, "usage"},
        {"HEX", {"set", "6"}, "usage"},
        {"HEX", {"reset"}, "usage"},
        {"HEX", {"get", "кофе"}, "refusal", 1},
    };
    for (const auto& row : rows) {
        BasicFrSettings settings;
        SettingsDriver driver(&settings);
        Options options;
        options.protocol = row.protocol;
        options.command = "params";
        options.arguments = row.arguments;
        QString result;
        try {
            findCommand(options).prepare(options).onRegister(driver);
            result = driver.written.join(',');
        } catch (const UsageError&) {
            result = "usage";
        } catch (const Refusal&) {
            result = "refusal";
        }
        EXPECT_EQ(result, row.result) << row.arguments.join(' ').toStdString();
        EXPECT_EQ(driver.printouts, row.printouts) << row.arguments.join(' ').toStdString();
    }
}

} // namespace
