#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "messagelog.h"
#include "mockserialdriver.h"
#include "thrown.h"

using testing::NiceMock;
using testing::Return;

namespace {

enum Outcome { Works, NoLink, Silence, PortTrouble, PaperOut };

void play(Outcome outcome)
{
    switch (outcome) {
    case Works:
        return;
    case NoLink:
        throw FrNoConnectionException("no link");
    case Silence:
        throw ComDriverTimeoutException("silence");
    case PortTrouble:
        throw ComDriverException("trouble");
    case PaperOut:
        throw FrPaperException("paper");
    }
}

/// A driver whose exchanges and speed settings come out as scripted; what the script does not name works.
class ScriptedDriver : public BasicFrDriver
{
public:
    using BasicFrDriver::BasicFrDriver;
    using BasicFrDriver::connectedOnce;
    using BasicFrDriver::currentSpeed;
    using BasicFrDriver::portState;
    using BasicFrDriver::speeds;

    void setConnection() override { play(exchanges.value(exchangeCount++, Works)); }

    QList<Outcome> exchanges;
    int exchangeCount = 0;
};

struct Case
{
    const char* name;
    int type;
    bool speedEnumerate;
    /// The speed of an earlier connection, 0 when there was none.
    int speedBefore;
    QList<int> speeds;
    QList<Outcome> exchanges;
    QList<Outcome> rateSettings;
    std::string thrown;
    std::vector<int> ratesSet;
    int exchangeCount;
    /// The speed afterwards.
    int speed;
    bool connectedOnce;
};

const std::string noLink = "FrNoConnectionException: Нет связи";
const std::string noRegister = "FrNoConnectionException: Нет связи с ФР";
const std::string paper = "FrPaperException: paper";

// clang-format off
const Case cases[] = {
    {"defaultSpeed", 1, true, 0, {9600}, {}, {}, "", {19200}, 1, 19200, true},
    {"silenceAtDefaultSpeed", 0, true, 0, {9600}, {Silence}, {}, noLink, {19200}, 1, 19200, false},
    {"defaultSpeedRefused", 1, true, 0, {9600}, {}, {PortTrouble}, noLink, {19200}, 0, 19200, false},
    {"refusalPasses", 1, true, 0, {9600}, {PaperOut}, {}, paper, {19200}, 1, 19200, false},
    {"noOtherSpeeds", 1, true, 0, {}, {NoLink}, {}, noRegister, {19200, 19200}, 1, 19200, false},
    {"otherSpeedInOrder", 1, true, 0, {9600, 19200, 57600, 4800, 2400}, {NoLink, Silence, NoLink}, {},
        "", {19200, 9600, 57600, 4800}, 4, 4800, true},
    {"otherSpeedRefused", 1, true, 0, {9600, 4800}, {NoLink}, {Works, PortTrouble},
        "", {19200, 9600, 4800}, 2, 4800, true},
    {"refusalAtOtherSpeedPasses", 1, true, 0, {9600, 4800}, {NoLink, PaperOut}, {},
        paper, {19200, 9600}, 2, 19200, false},
    {"noSpeedWorks", 1, true, 9600, {4800}, {NoLink, NoLink}, {Works, Works, PortTrouble},
        noRegister, {19200, 4800, 19200}, 2, 9600, true},
    {"firstTimeTriesAllThoughOff", 1, false, 0, {9600}, {NoLink}, {}, "", {19200, 9600}, 2, 9600, true},
    {"laterOnlyLastSpeed", 1, false, 9600, {4800}, {NoLink}, {}, "", {19200, 9600}, 2, 9600, true},
    {"laterLastSpeedFails", 1, false, 9600, {4800}, {NoLink, NoLink}, {},
        noRegister, {19200, 9600, 19200}, 2, 9600, true},
    {"laterPortTrouble", 1, false, 9600, {4800}, {NoLink, PortTrouble}, {},
        noLink, {19200, 9600}, 2, 9600, true},
    {"laterRefusalPasses", 1, false, 9600, {4800}, {NoLink, PaperOut}, {},
        paper, {19200, 9600}, 2, 9600, true},
    {"networkThirdTry", 3, true, 0, {9600}, {NoLink, NoLink}, {}, "", {}, 3, 19200, false},
    {"networkThreeFailures", 4, true, 0, {9600}, {NoLink, NoLink, NoLink}, {}, noRegister, {}, 3, 19200, false},
    {"networkPortTrouble", 3, false, 9600, {}, {NoLink, Silence}, {}, noRegister, {}, 2, 9600, true},
    {"networkRefusalPasses", 4, true, 0, {}, {NoLink, PaperOut}, {}, paper, {}, 2, 19200, false},
};
// clang-format on

class ConnectTest : public testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(ConnectTest, branch)
{
    const Case& c = GetParam();
    std::vector<int> rates;
    NiceMock<MockSerialDriver> serial;
    ON_CALL(serial, getType).WillByDefault(Return(c.type));
    ON_CALL(serial, setBaudRate).WillByDefault([&](QSerialPort::BaudRate rate) {
        rates.push_back(rate);
        play(c.rateSettings.value(static_cast<qsizetype>(rates.size()) - 1, Works));
        return true;
    });
    BasicFrSettings settings;
    settings.setSpeedEnumerate(c.speedEnumerate);
    ScriptedDriver driver(&serial, QStringLiteral("test"), &settings);
    driver.speeds = c.speeds;
    driver.exchanges = c.exchanges;
    if (c.speedBefore != 0) {
        driver.connectedOnce = true;
        driver.currentSpeed = c.speedBefore;
    }

    EXPECT_EQ(thrown([&] { driver.connect(); }), c.thrown);
    EXPECT_EQ(rates, c.ratesSet);
    EXPECT_EQ(driver.exchangeCount, c.exchangeCount);
    EXPECT_EQ(driver.currentSpeed, c.speed);
    EXPECT_EQ(driver.connectedOnce, c.connectedOnce);
}

INSTANTIATE_TEST_SUITE_P(
    All, ConnectTest, testing::ValuesIn(cases), [](const auto& test) { return test.param.name; });

TEST(Connect, logLines)
{
    NiceMock<MockSerialDriver> serial;
    EXPECT_CALL(serial, getType).WillOnce(Return(2)).WillOnce(Return(2)).WillRepeatedly(Return(3));
    BasicFrSettings settings;
    settings.setSpeedEnumerate(false);
    ScriptedDriver driver(&serial, QStringLiteral("test"), &settings);
    driver.speeds = {9600};
    driver.exchanges = {NoLink, Works, NoLink, Silence, Silence};
    const MessageLog log;
    for (int i = 0; i < 3; ++i)
        thrown([&] { driver.connect(); });
    const std::vector<std::string> expected{
        "info frdriver.test: Установка связи с устройством",
        "info frdriver.test: Скорость по умолчанию: 19200",
        "debug frdriver.test: Перебор скорости подключения к ФР",
        "info frdriver.test:  скорость: 9600",
        "info frdriver.test: Установка связи с устройством",
        "info frdriver.test: Скорость по умолчанию: 19200",
        "debug frdriver.test: Перебор скорости отключен настройками",
        "info frdriver.test:  установка соединения на скорости: 9600",
        "error frdriver.test: silence",
        "info frdriver.test: Установка связи с устройством",
        "error frdriver.test: Не удалось установить соединение: silence",
    };
    EXPECT_EQ(MessageLog::taken(), expected);
}

TEST(Connect, needsATransportAndAnOpenPort)
{
    ScriptedDriver bare;
    EXPECT_EQ(
        thrown([&] { bare.isPortReady(); }), "FrNoConnectionException: Ошибка инициализации драйвера порта");
    EXPECT_EQ(
        thrown([&] { bare.connect(); }), "FrNoConnectionException: Ошибка инициализации драйвера порта");

    NiceMock<MockSerialDriver> serial;
    ScriptedDriver driver(&serial, QStringLiteral("test"), nullptr);
    EXPECT_EQ(thrown([&] { driver.isPortReady(); }), "FrNoConnectionException: Необходимо открыть порт");
    driver.portState = 0;
    EXPECT_EQ(thrown([&] { driver.isPortReady(); }), "");
}
