#include "basicfrdriver.h"
#include "basicfrsettings.h"
#include "messagelog.h"
#include "mockserialdevice.h"
#include "serialdriverwrapper.h"
#include "thrown.h"

using testing::NiceMock;
using testing::Return;

namespace {

/// A driver whose exchanges come out as scripted: N no connection, S silence of the device, P paper is out;
/// a point and what the script does not name works.
class ScriptedDriver : public BasicFrDriver
{
public:
    using BasicFrDriver::BasicFrDriver;
    using BasicFrDriver::connectedOnce;
    using BasicFrDriver::currentSpeed;
    using BasicFrDriver::speeds;

    void setConnection() override
    {
        const char outcome = next < script.size() ? script[next++] : '.';
        trace += outcome;
        if (outcome == 'N')
            throw FrNoConnectionException("no link");
        if (outcome == 'S')
            throw ComDriverTimeoutException("silence");
        if (outcome == 'P')
            throw FrPaperException("paper");
    }

    std::string script;
    /// The speeds set and the exchanges in their order.
    std::string trace;

private:
    std::size_t next = 0;
};

struct Case
{
    const char* name;
    int type;
    bool speedEnumerate;
    /// The speed of an earlier connection, 0 when there was none.
    int speedBefore;
    QList<int> speeds;
    const char* script;
    /// The speed that the port refuses.
    int refused;
    const char* thrown;
    const char* trace;
    int speedAfter;
    bool connectedOnce;
};

const char* const noLink = "FrNoConnectionException: Нет связи";
const char* const noRegister = "FrNoConnectionException: Нет связи с ФР";
const char* const paper = "FrPaperException: paper";

// clang-format off
const Case cases[] = {
    {"defaultSpeed", 1, true, 0, {9600}, ".", 0, "", "19200.", 19200, true},
    {"silenceAtDefaultSpeed", 0, true, 0, {9600}, "S", 0, noLink, "19200S", 19200, false},
    {"defaultSpeedRefused", 1, true, 0, {9600}, "", 19200, noLink, "19200", 19200, false},
    {"refusalPasses", 1, true, 0, {9600}, "P", 0, paper, "19200P", 19200, false},
    {"otherSpeeds", 1, true, 0, {96, 19200, 576, 48, 24}, "NSN.", 0, "", "19200N96S576N48.", 48, true},
    {"otherSpeedRefused", 1, true, 0, {9600, 4800}, "N.", 9600, "", "19200N96004800.", 4800, true},
    {"refusalAtOtherSpeedPasses", 1, true, 0, {9600, 4800}, "NP", 0, paper, "19200N9600P", 19200, false},
    {"noSpeedWorks", 1, true, 9600, {4800}, "NN", 0, noRegister, "19200N4800N19200", 9600, true},
    {"firstTimeThoughOff", 1, false, 0, {9600}, "N.", 0, "", "19200N9600.", 9600, true},
    {"laterOnlyLastSpeed", 1, false, 9600, {4800}, "N.", 0, "", "19200N9600.", 9600, true},
    {"laterLastSpeedFails", 1, false, 9600, {4800}, "NN", 0, noRegister, "19200N9600N19200", 9600, true},
    {"networkThirdTry", 3, true, 0, {9600}, "NN.", 0, "", "NN.", 19200, false},
    {"networkThreeFailures", 4, true, 0, {9600}, "NNN", 0, noRegister, "NNN", 19200, false},
    {"networkRefusalPasses", 4, true, 0, {}, "NP", 0, paper, "NP", 19200, false},
};
// clang-format on

} // namespace

TEST(Connection, takesEveryBranch)
{
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        NiceMock<MockSerialDevice> device;
        SerialDriverWrapper serial(&device);
        BasicFrSettings settings;
        ScriptedDriver driver(&serial, QStringLiteral("test"), &settings);
        ON_CALL(device, getType).WillByDefault(Return(c.type));
        ON_CALL(device, isOpen).WillByDefault(Return(true));
        ON_CALL(device, setBaudRate).WillByDefault([&](QSerialPort::BaudRate rate) {
            driver.trace += std::to_string(rate);
            return rate != c.refused;
        });
        settings.setSpeedEnumerate(c.speedEnumerate);
        driver.speeds = c.speeds;
        driver.script = c.script;
        driver.connectedOnce = c.speedBefore != 0;
        if (driver.connectedOnce)
            driver.currentSpeed = c.speedBefore;

        EXPECT_EQ(thrown([&] { driver.connect(); }), c.thrown);
        EXPECT_EQ(driver.trace, c.trace);
        EXPECT_EQ(driver.currentSpeed, c.speedAfter);
        EXPECT_EQ(driver.connectedOnce, c.connectedOnce);
    }
}

TEST(Connection, logLines)
{
    EXPECT_EQ(thrown([] { BasicFrDriver().connect(); }),
        "FrNoConnectionException: Ошибка инициализации драйвера порта");
    NiceMock<MockSerialDevice> device;
    ON_CALL(device, isOpen).WillByDefault(Return(true));
    ON_CALL(device, setBaudRate).WillByDefault(Return(true));
    EXPECT_CALL(device, getType).WillOnce(Return(2)).WillOnce(Return(2)).WillRepeatedly(Return(3));
    SerialDriverWrapper serial(&device);
    BasicFrSettings settings;
    settings.setSpeedEnumerate(false);
    ScriptedDriver driver(&serial, QString(), &settings);
    driver.speeds = {9600};
    driver.script = "N.NSS";
    const MessageLog log;
    for (int i = 0; i < 3; ++i)
        thrown([&] { driver.connect(); });
    const std::string begin = "info frdriver: Установка связи с устройством";
    const std::string speed = "info frdriver: Скорость по умолчанию: 19200";
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre(begin, speed, "debug frdriver: Перебор скорости подключения к ФР",
            "info frdriver:  скорость: 9600", begin, speed,
            "debug frdriver: Перебор скорости отключен настройками",
            "info frdriver:  установка соединения на скорости: 9600", "error frdriver: silence", begin,
            "error frdriver: Не удалось установить соединение: silence"));
}
