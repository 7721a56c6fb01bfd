#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "messagelog.h"

#include <gtest/gtest.h>

#include <functional>

using hw::fr::Option;

namespace {

class ParameterDriver : public BasicFrDriver
{
public:
    bool legacySetParam(
        unsigned short table, unsigned short row, unsigned short field, const QString& value) override
    {
        written << QStringLiteral("%1/%2/%3=%4").arg(table).arg(row).arg(field).arg(value);
        return value != QStringLiteral("bad");
    }

    QStringList written;
};

} // namespace

TEST(BasicFrDriver, whatTheDeviceCannotDoIsLogged)
{
    BasicFrDriver driver(nullptr, QStringLiteral("spf_7"), nullptr);
    const FrPosition position(QStringLiteral("Чай"), 10.0, 2.0);
    const FdRequisite requisite(EFrDriver::CashierName, QStringLiteral("Иванова"));
    // clang-format off
    const std::vector<std::pair<std::function<void()>, QString>> table{
        {[&] { driver.reinitialize(); }, "warn: Реинициализация(технологическое обнуление) не поддерживается устройством"},
        {[&] { driver.reboot({}); }, "warn: Перезагрузка не поддерживается устройством"},
        {[&] { driver.setFont({}); }, "debug: Установка шрифта не поддерживается устройством"},
        {[&] { driver.setLineSpacing(-1); }, ""},
        {[&] { driver.setLineSpacing(0); }, "debug: Установка межстрочного интервала не поддерживается устройством"},
        {[&] { driver.beep(); }, "info: Подача звукового сигнала не поддерживается устройством"},
        {[&] { driver.barcodePrint({}); }, "warn: Печать штрих-кода не поддерживается устройством"},
        {[&] { EXPECT_FALSE(driver.setTail({})); }, "info: Программирование рекламного текста не поддерживается устройством"},
        {[&] { EXPECT_FALSE(driver.setGraphicCliche({})); }, "info: Установка графического клише не поддерживается устройством"},
        {[&] { driver.addPostLines({}); }, "warn: Печать дополнительных элементов при закрытии чека не поддерживается"},
        {[&] { driver.textDocOpen({}); }, "info: Открытие текстового документа"},
        {[&] { EXPECT_FALSE(driver.setCliche({})); }, "info: Программирование клише не поддерживается устройством"},
        {[&] { driver.checkAddPosition(position); }, "info: Добавление позиции в чек: " + position.toString()},
        {[&] { driver.checkPay({3, 1234567.5}); }, "info: Расчет по чеку: (3) 1234567.50"},
        {[&] { driver.setRequisite(requisite); }, "info: Запись реквизита 1021 (" + requisite.getDescription() + ") в ФР"},
        {[&] { EXPECT_TRUE(driver.checkClose({}).isEmpty()); }, ""},
    };
    // clang-format on
    const MessageLog log;
    for (const auto& [call, line] : table) {
        call();
        std::vector<std::string> expected;
        if (!line.isEmpty())
            expected.push_back(QString(line).insert(line.indexOf(':'), " frdriver.spf_7").toStdString());
        EXPECT_EQ(MessageLog::taken(), expected);
    }
}

TEST(BasicFrDriver, configuredOptionsWin)
{
    BasicFrSettings settings;
    BasicFrDriver driver(nullptr, QString(), &settings);
    driver.setOption(Option(0x1000000000), true);
    driver.setOption(Option(0x80000), false);
    EXPECT_TRUE(driver.checkOption(Option(0x1000000000 | 0x4 | 0x1000000)));
    EXPECT_FALSE(driver.checkOption(Option(0x80000 | 0x4)));

    settings.mergeOptions({{Option(16), false}, {Option(2), true}, {Option(4), false}});
    BasicFrDriver configured(nullptr, QString(), &settings);
    configured.setOption(Option(16), true);
    configured.setOption(Option(2), false);
    EXPECT_FALSE(configured.useFN());
    EXPECT_TRUE(configured.checkOption(Option(2)));
    EXPECT_FALSE(configured.checkOption(Option(4)));
}

TEST(BasicFrDriver, parametersStopAtTheFirstRefusal)
{
    ParameterDriver driver;
    EXPECT_TRUE(driver.setParams({{1, 2, 3, "a"}, {4, 5, 6, "b"}}));
    EXPECT_FALSE(driver.setParams({{1, 0, 0, "c"}, {2, 0, 0, "bad"}, {3, 0, 0, "d"}}));
    EXPECT_EQ(driver.written, QStringList({"1/2/3=a", "4/5/6=b", "1/0/0=c", "2/0/0=bad"}));
}
