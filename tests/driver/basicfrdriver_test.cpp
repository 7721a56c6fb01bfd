#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "messagelog.h"
#include "mockserialdriver.h"
#include "thrown.h"

#include <functional>
#include <sstream>

using hw::fr::Option;
using testing::StrictMock;

namespace {

class BasicFrDriverTest : public testing::Test
{
protected:
    /// Strict: none of the base's answers may touch the line.
    StrictMock<MockSerialDriver> serial;
    BasicFrSettings settings;
    BasicFrDriver driver{&serial, QStringLiteral("spf_7"), &settings};
};

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

TEST_F(BasicFrDriverTest, whatTheDeviceCannotDoIsLogged)
{
    const FrPosition position(QStringLiteral("Чай"), 10.0, 2.0);
    const FdRequisite requisite(EFrDriver::CashierName, QStringLiteral("Иванова"));
    const std::vector<std::pair<std::function<void()>, QString>> table{
        {[&] { driver.reinitialize(); },
            "warn: Реинициализация(технологическое обнуление) не поддерживается устройством"},
        {[&] { driver.reboot(EFrDriver::RebootNormal); }, "warn: Перезагрузка не поддерживается устройством"},
        {[&] { driver.setFont({}); }, "debug: Установка шрифта не поддерживается устройством"},
        {[&] { driver.setLineSpacing(0); },
            "debug: Установка межстрочного интервала не поддерживается устройством"},
        {[&] { driver.setLineSpacing(-1); }, ""},
        {[&] { driver.beep(); }, "info: Подача звукового сигнала не поддерживается устройством"},
        {[&] { driver.barcodePrint({}); }, "warn: Печать штрих-кода не поддерживается устройством"},
        {[&] { EXPECT_FALSE(driver.setCliche({})); },
            "info: Программирование клише не поддерживается устройством"},
        {[&] { EXPECT_FALSE(driver.setTail({})); },
            "info: Программирование рекламного текста не поддерживается устройством"},
        {[&] { EXPECT_FALSE(driver.setGraphicCliche({})); },
            "info: Установка графического клише не поддерживается устройством"},
        {[&] { driver.addPostLines({}); },
            "warn: Печать дополнительных элементов при закрытии чека не поддерживается"},
        {[&] { driver.checkAddPosition(position); },
            "info: Добавление позиции в чек: " + position.toString()},
        {[&] {
             driver.checkPay({3, 1234567.5});
         },
            "info: Расчет по чеку: (3) 1234567.50"},
        {[&] { driver.textDocOpen(hw::fr::CheckNonFiscal); }, "info: Открытие текстового документа"},
        {[&] { driver.setRequisite(requisite); },
            "info: Запись реквизита 1021 (" + requisite.getDescription() + ") в ФР"},
        {[&] { EXPECT_TRUE(driver.checkClose({}).isEmpty()); }, ""},
    };
    const MessageLog log;
    for (const auto& [call, line] : table) {
        call();
        std::vector<std::string> expected;
        if (!line.isEmpty())
            expected.push_back(QString(line).insert(line.indexOf(':'), " frdriver.spf_7").toStdString());
        EXPECT_EQ(MessageLog::taken(), expected);
    }
}

TEST_F(BasicFrDriverTest, fixedAnswers)
{
    EXPECT_EQ(driver.getDefaultPaymentType(), 1);
    EXPECT_EQ(driver.getHoursDifferenceLimit(), -1);
    EXPECT_EQ(driver.getFrDocOffset(), -1);
    EXPECT_EQ(driver.getCheckCountersTries(), 1);
    EXPECT_EQ(driver.getMainPaymentType(17), 17);
    EXPECT_TRUE(driver.isShiftOpen());
    EXPECT_FALSE(driver.isRegistrationParametersChanged({{"1009", 1}}));
    std::ostringstream dump;
    EXPECT_EQ(&driver.getDump(0, 1, dump), &dump);
    EXPECT_EQ(dump.str(), "");
    EXPECT_LT(std::abs(driver.getDateTime().secsTo(QDateTime::currentDateTime())), 60);
    EXPECT_EQ(driver.getDeviceInfo().getLoggerName(), "spf_7");
    EXPECT_EQ(driver.getDeviceSettings(), &settings);
    EXPECT_EQ(driver.getNumber(), 0);
    driver.setNumber(5);
    EXPECT_EQ(driver.getNumber(), 5);
    EXPECT_FALSE(driver.getOfdStatusInfo().firstUnsentDateTime.isValid());
    EXPECT_EQ(driver.getOfdStatusInfo().firstUnsentNumber, -1);
    EXPECT_EQ(driver.getFnInfo().ofdStatus.firstUnsentNumber, -1);
    EXPECT_FALSE(driver.getKkmRegisterBeg().totalSales.isValid());
    EXPECT_FALSE(driver.getKkmRegisterEnd().saleSum.isValid());
    EXPECT_FALSE(driver.setDefaults());
    EXPECT_FALSE(driver.setDateTime(QDateTime::currentDateTime()));
}

TEST_F(BasicFrDriverTest, configuredOptionsWin)
{
    EXPECT_TRUE(driver.checkOption(Option(0x4 | 0x80000 | 0x1000000)));
    EXPECT_FALSE(driver.checkOption(Option(0x4 | 0x10)));
    driver.setOption(Option(0x1000000000), true);
    driver.setOption(Option(0x80000), false);
    EXPECT_TRUE(driver.checkOption(Option(0x1000000000 | 0x4)));
    EXPECT_FALSE(driver.checkOption(Option(0x80000)));

    settings.mergeOptions({{Option(16), false}, {Option(2), true}, {Option(4), false}});
    BasicFrDriver configured(&serial, QString(), &settings);
    configured.setOption(Option(16), true);
    configured.setOption(Option(2), false);
    EXPECT_FALSE(configured.useFN());
    EXPECT_TRUE(configured.checkOption(Option(2)));
    EXPECT_FALSE(configured.checkOption(Option(4)));
    driver.setOption(Option(4), true);
    EXPECT_FALSE(driver.checkOption(Option(4)));
}

TEST(BasicFrDriver, ownSettingsOutliveTheDriver)
{
    BasicFrSettings* kept = nullptr;
    {
        const BasicFrDriver first;
        const BasicFrDriver second;
        kept = first.getDeviceSettings();
        EXPECT_NE(kept, second.getDeviceSettings());
    }
    EXPECT_TRUE(kept->isSpeedEnumerate());
}

TEST(BasicFrDriver, parametersStopAtTheFirstRefusal)
{
    ParameterDriver driver;
    EXPECT_TRUE(driver.setParams({}));
    EXPECT_TRUE(driver.setParams({{1, 2, 3, "a"}, {4, 5, 6, "b"}}));
    EXPECT_FALSE(driver.setParams({{1, 0, 0, "c"}, {2, 0, 0, "bad"}, {3, 0, 0, "d"}}));
    EXPECT_EQ(driver.written, QStringList({"1/2/3=a", "4/5/6=b", "1/0/0=c", "2/0/0=bad"}));
    EXPECT_FALSE(BasicFrDriver().setParams({{1, 0, 0, "e"}}));
}
