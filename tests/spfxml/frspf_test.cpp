#include "scriptedfrspf.h"

#include <fruser.h>
#include <mockfactory.h>

#include <functional>

namespace {

using namespace testing;
using Operation = std::function<void()>;
using Operations = ScriptedFrSpf;

class TailStore : public hw::ParamManager
{
public:
    MOCK_METHOD(QList<QString>, getTailLines, (const DeviceInfo&, quint32), (const, override));
};

const QDateTime moment(QDate(2026, 3, 1), QTime(14, 5, 9));
const char* const clock22 = "<pa n='200001' t='5'>2026-03-01 14:05:09</pa>";

TEST_F(Operations, openThePort)
{
    EXPECT_CALL(serial,
        portOpen(QSerialPort::Baud115200, QSerialPort::NoParity, QSerialPort::Data8, QSerialPort::OneStop))
        .WillOnce(Throw(ComDriverException("Порт занят")));
    EXPECT_EQ(driver.optionMask, 0x1081080E16u);
    const MessageLog log;
    EXPECT_EQ(thrown([&] { driver.portOpen(); }), "FrNoConnectionException: Невозможно открыть порт");
    EXPECT_THAT(MessageLog::taken(),
        ElementsAre("info frdriver.spf_0: Открытие порта", "error frdriver.spf_0: Порт занят"));

    Driver withoutPort(nullptr, &settings);
    EXPECT_EQ(thrown([&] { withoutPort.portOpen(); }),
        "FrNoConnectionException: Ошибка инициализации драйвера порта");
}

TEST_F(Operations, askWhoTheDeviceIsOnlyOnceAndReadTheTailWithoutItsEmptyEnd)
{
    TailStore store;
    MockFactory<hw::ParamManager>::mocked = &store;
    settings.setDeviceId(4);
    EXPECT_CALL(store, getTailLines(_, 4))
        .WillOnce(Return(QList<QString>{"", "a", "", " \t"}))
        .WillOnce(Return(QList<QString>{" ", ""}));
    driver.setConnection();
    driver.init();
    EXPECT_EQ(script->tailText, "\na");
    driver.init();
    EXPECT_EQ(script->tailText, "");
    EXPECT_THAT(script->taken(), ElementsAre("58 x5 ", "2 x5 "));
    MockFactory<hw::ParamManager>::mocked = nullptr;
}

TEST_F(Operations, deriveModelAndFontsFromTheStatus)
{
    // Model, normal font, double width, small font.
    const std::pair<const char*, const char*> cases[] = {
        {"1013=0010312|PaperWidth=48", "3 СП402-Ф 48 24 64"},
        {"1013=00002|PaperWidth=30", "2 СП101-Ф 30 22 42"},
        {"1013=8018018|PaperWidth=48", "80 Неизвестная модель 48 24 64"},
        {"1013=0010512|PaperWidth=32|KKTFWVersion=v2", "5 СП802-Ф 32 16 44"},
    };
    for (const auto& [answer, expected] : cases) {
        script->answers[2] = answer;
        driver.setDeviceInfo();
        const DeviceInfo info = driver.getDeviceInfo();
        const auto widths = info.getBandWidthInfo();
        const QString described = QString("%1 %2 %3 %4 %5")
                                      .arg(info.getModelCode(), info.getModelName())
                                      .arg(widths.value(EFrDriver::NormalFont))
                                      .arg(widths.value(EFrDriver::DoubleWidthFont))
                                      .arg(widths.value(EFrDriver::SmallFont));
        EXPECT_EQ(described.toStdString(), expected);
        EXPECT_EQ(widths.values().count(info.getBandWidth()), 6);
    }
    EXPECT_EQ(driver.getDeviceInfo().getClicheLineCount(), 4u);
    EXPECT_EQ(driver.getDeviceInfo().getTailLineCount(), 30u);
    script->answers[22] = clock22;
    EXPECT_EQ(driver.getDeviceStateDescription().join('\n'),
        "Производитель: 2 Сервис Плюс\nМодель: 5 СП802-Ф\nНомер: 0010512\nСкорость подключения: 115200\n"
        "Дата: 01.03.2026 Время: 14:05:09\n\n"
            + script->getStatus().toString());
}

TEST_F(Operations, sendTheirTreesAsTheShiftAllows)
{
    const char* const open = "ShiftState=1";
    const char* const closed = "ShiftState=0";
    const std::tuple<const char*, Operation, const char*> cases[]{
        {closed, [&] { driver.openShift(); }, "4 x5 2:7{1021:1=%2 касса Ёж 1203:1=77}"},
        {open, [&] { driver.zReport(); }, "6 x5 5:7{1021:1=%2 касса Ёж 1203:1=77}"},
        {closed, [&] { EXPECT_TRUE(driver.setDateTime(moment)); },
            "24 x5 200001:7{DateTime:5=2026-03-01 14:05:09}"},
        {open, [&] { driver.accountingReport(); }, "12 x5 21:7{1021:1=%2 касса Ёж}"},
        {closed, [&] { driver.xReport(); }, "46 x5 200015:7{1021:1=%2 касса Ёж}"},
        {closed, [&] { driver.drawerOpen(); }, "36 x5 "},
        // The number loses what does not fit 32 bits.
        {closed, [&] { driver.printFnDocument(0x100000007); }, "16 x5 100000:7{1040:4=7}"},
    };
    driver.cashierLogin({"Ёж", "%2 касса", "77"});
    for (const auto& [shift, call, sent] : cases) {
        script->answers[44] = shift;
        call();
        EXPECT_THAT(script->taken(), ElementsAre(sent));
    }
    driver.cashierLogin({"Ёж", {}, {}});
    driver.openShift();
    EXPECT_THAT(script->taken(), ElementsAre("4 x5 2:7{1021:1=Ёж}"));
}

TEST_F(Operations, readClockAndDrawerWhereTheyStand)
{
    const std::pair<const char*, const char*> clocks[]{{clock22, "2026-03-01 14:05:09"},
        {"<pa n='1'><pa n='200001' t='5'>2026-03-01 14:05:09</pa></pa>", ""}};
    for (const auto& [answer, expected] : clocks) {
        script->answers[22] = answer;
        EXPECT_EQ(driver.getDateTime().toString("yyyy-MM-dd hh:mm:ss"), expected) << answer;
    }
    const std::pair<const char*, bool> drawers[]{
        {"<pa n='r'><pa n='Is'>0</pa><pa n='IsOpen'>1</pa></pa>", true},
        {"<pa n='r'><pa n='IsOpen'>FALSE</pa></pa>", false}, {"<pa n='IsOpen'>1</pa>", false}};
    for (const auto& [answer, isOpen] : drawers) {
        script->answers[52] = answer;
        EXPECT_EQ(driver.isCashDrawerOpened(), isOpen) << answer;
    }
}

} // namespace
