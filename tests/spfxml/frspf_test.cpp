#include "driver/messagelog.h"
#include "driver/mockserialdriver.h"
#include "driver/thrown.h"
#include "mockspffrcommand.h"
#include "xmltext.h"

#include "spfxml/frspf.h"

#include <frspfsettings.h>
#include <fruser.h>
#include <mockfactory.h>

#include <QJsonObject>

#include <gtest/gtest.h>

#include <functional>

using testing::_;
using testing::NiceMock;
using testing::Return;
using testing::StrictMock;
using testing::Throw;

namespace {

class TestedFrSpf : public spfxml::FrSpf
{
public:
    TestedFrSpf(AbstractSerialDriver* serialDriver, FrSpfSettings* driverSettings, Log4Qt::Logger* log)
        : FrSpf(serialDriver, driverSettings)
        , mock(QSharedPointer<StrictMock<MockSpfFrCommand>>::create(serialDriver, log, QString()))
    {
        command = mock;
    }

    quint64 options() const { return optionMask; }

    QSharedPointer<StrictMock<MockSpfFrCommand>> mock;
};

class TailStore : public hw::ParamManager
{
public:
    MOCK_METHOD(QList<QString>, getTailLines, (const DeviceInfo&, quint32), (const, override));
};

spfxml::ShiftStatus shift(bool isOpen)
{
    return spfxml::ShiftStatus(answerWith(isOpen ? "ShiftState=1" : "ShiftState=0"));
}

spfxml::SpfStatus status(const char* answer)
{
    return {answerWith(answer), QDomDocument()};
}

class FrSpfTest : public testing::Test
{
protected:
    FrSpfTest()
    {
        settings.setDeviceId(4);
        driver.reset(new TestedFrSpf(&serial, &settings, nullptr));
        driver->portOpen();
        MockFactory<hw::ParamManager>::mocked = &store;
    }
    ~FrSpfTest() override { MockFactory<hw::ParamManager>::mocked = nullptr; }

    MockSpfFrCommand& command() { return *driver->mock; }

    NiceMock<MockSerialDriver> serial;
    FrSpfSettings settings;
    QScopedPointer<TestedFrSpf> driver;
    NiceMock<TailStore> store;
};

TEST_F(FrSpfTest, opensThePort)
{
    EXPECT_CALL(serial,
        portOpen(QSerialPort::Baud115200, QSerialPort::NoParity, QSerialPort::Data8, QSerialPort::OneStop))
        .WillOnce(Throw(ComDriverException(QStringLiteral("Порт занят"))));
    EXPECT_EQ(driver->options(), 0x1081080E16u);
    const MessageLog log;
    EXPECT_EQ(thrown([&] { driver->portOpen(); }), "FrNoConnectionException: Невозможно открыть порт");
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre("info frdriver.spf_4: Открытие порта", "error frdriver.spf_4: Порт занят"));

    TestedFrSpf withoutPort(nullptr, &settings, nullptr);
    EXPECT_EQ(thrown([&] { withoutPort.portOpen(); }),
        "FrNoConnectionException: Ошибка инициализации драйвера порта");
    EXPECT_NO_THROW(withoutPort.portClose());
}

TEST_F(FrSpfTest, asksWhoTheDeviceIsOnlyOnce)
{
    EXPECT_CALL(command(), getStatus()).WillOnce(Return(status("1013=0010312|KKTFWVersion=v2")));
    EXPECT_CALL(command(), setTail(_)).Times(2);
    driver->setConnection();
    driver->init();
    driver->init();
    const DeviceInfo info = driver->getDeviceInfo();
    EXPECT_EQ(
        info.getProducerCode() + info.getNumber() + info.getFirmwareVersion(), QStringLiteral("20010312v2"));
    EXPECT_EQ(info.getClicheLineCount(), 4u);
    EXPECT_EQ(info.getTailLineCount(), 30u);
}

TEST_F(FrSpfTest, derivesModelAndFontsFromTheStatus)
{
    // Model, normal font, large font, small font.
    const std::pair<const char*, const char*> cases[] = {
        {"1013=0010512|PaperWidth=32", "5 СП802-Ф 32 16 44"},
        {"1013=0010312|PaperWidth=48", "3 СП402-Ф 48 24 64"},
        {"1013=0010199|PaperWidth=47", "1 ЧекВей7-Ф 47 23 65"},
        {"1013=00002|PaperWidth=30", "2 СП101-Ф 30 22 42"},
        {"1013=8018018|PaperWidth=48", "80 Неизвестная модель 48 24 64"},
        {"1013=001|PaperWidth=48", "0 Неизвестная модель 48 24 64"},
    };
    for (const auto& [answer, expected] : cases) {
        EXPECT_CALL(command(), getStatus()).WillOnce(Return(status(answer)));
        driver->setDeviceInfo();
        const DeviceInfo info = driver->getDeviceInfo();
        const auto widths = info.getBandWidthInfo();
        const QString described = QStringLiteral("%1 %2 %3 %4 %5")
                                      .arg(info.getModelCode(), info.getModelName())
                                      .arg(widths.value(EFrDriver::NormalFont))
                                      .arg(widths.value(EFrDriver::LargeFont))
                                      .arg(widths.value(EFrDriver::SmallFont));
        EXPECT_EQ(described.toStdString(), expected);
        EXPECT_EQ(widths.values().count(info.getBandWidth()), 6);
    }
}

TEST_F(FrSpfTest, cutsTheEmptyEndOfTheTail)
{
    const QString a = QStringLiteral("a");
    const QString blank = QStringLiteral(" \t");
    const std::pair<QList<QString>, QList<QString>> cases[]
        = {{{a, {}, blank}, {a}}, {{{}, a, {}}, {{}, a}}, {{blank, {}}, {}}, {{}, {}}};
    for (const auto& [lines, expected] : cases) {
        EXPECT_CALL(store, getTailLines(_, 4)).WillOnce(Return(lines));
        EXPECT_CALL(command(), setTail(expected));
        driver->loadTail();
    }
}

TEST_F(FrSpfTest, namesTheCashierWithThePosition)
{
    driver->cashierLogin({QStringLiteral("Ёлкина"), QStringLiteral("%2 касса"), QStringLiteral("77")});
    EXPECT_EQ(command().sentCashierName(), QStringLiteral("%2 касса Ёлкина"));
    EXPECT_EQ(command().sentCashierInn(), QStringLiteral("77"));
    driver->cashierLogin({QStringLiteral("Ёлкина"), {}, {}});
    EXPECT_EQ(command().sentCashierName(), QStringLiteral("Ёлкина"));
}

TEST_F(FrSpfTest, followsTheStateOfTheShift)
{
    const QDateTime time(QDate(2026, 3, 1), QTime(14, 5, 9));
    const MessageLog log;
    // Open: the strict mock fails the test on any command that should not be sent.
    EXPECT_CALL(command(), getShiftStatus()).WillRepeatedly([] { return shift(true); });
    driver->openShift();
    EXPECT_FALSE(driver->setDateTime(time));
    EXPECT_CALL(command(), shiftClose());
    EXPECT_TRUE(driver->zReport().isEmpty());
    EXPECT_CALL(command(), accountingReport());
    driver->accountingReport();
    const std::string info = "info frdriver.spf_4: ";
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre(info + "Открытие смены", info + "Смена в ФР открыта",
            info + "Установка даты/времени в ККМ: 01.03.2026 14:05:09",
            info + "Невозможно выполнить синхронизацию времени, смена в ФР открыта",
            info + "Снятие суточного отчета с гашением", info + "Команда выполнена",
            info + "Снятие отчета о текущем состоянии расчетов"));

    EXPECT_CALL(command(), getShiftStatus()).WillRepeatedly([] { return shift(false); });
    EXPECT_CALL(command(), shiftOpen());
    driver->openShift();
    EXPECT_CALL(command(), setDateTime(time));
    EXPECT_TRUE(driver->setDateTime(time));
    EXPECT_TRUE(driver->zReport().isEmpty());
    EXPECT_EQ(
        thrown([&] { driver->accountingReport(); }), "FrCommandException: Необходимо закрыть смену в ФР");
    EXPECT_EQ(MessageLog::taken().at(4), info + "Смена в ФР закрыта");
}

TEST_F(FrSpfTest, needsAnOpenPortWhereItSays)
{
    driver->portClose();
    const QDateTime time;
    const std::function<void()> calls[] = {[&] { driver->openShift(); }, [&] { driver->xReport(); },
        [&] { driver->zReport(); }, [&] { driver->drawerOpen(); }, [&] { driver->isCashDrawerOpened(); },
        [&] { driver->getDateTime(); }, [&] { driver->setDateTime(time); }, [&] { driver->init(); },
        [&] { driver->setConnection(); }};
    for (const auto& call : calls)
        EXPECT_EQ(thrown(call), "FrNoConnectionException: Необходимо открыть порт");
    // These go straight to the exchange; the number loses what does not fit 32 bits.
    EXPECT_CALL(command(), printFNDocument(7));
    EXPECT_CALL(command(), printLastFNDocument());
    driver->printFnDocument(0x100000007);
    driver->printLastFnDocument();
}

TEST_F(FrSpfTest, logsTheFailuresOfThreeOperationsOnly)
{
    const FrWaitForPaperException paper(QStringLiteral("Конец бумаги"));
    EXPECT_CALL(command(), getCashDrawerStatus()).WillOnce(Throw(paper));
    EXPECT_CALL(command(), openDrawer()).WillOnce(Throw(paper));
    EXPECT_CALL(command(), getShiftStatus()).WillRepeatedly(Throw(paper));
    EXPECT_CALL(command(), printXReport()).WillOnce(Throw(paper));
    EXPECT_CALL(command(), getDateTime()).WillOnce(Throw(paper));
    const std::pair<std::function<void()>, long> calls[] = {{[&] { driver->isCashDrawerOpened(); }, 1},
        {[&] { driver->drawerOpen(); }, 1}, {[&] { driver->setDateTime({}); }, 1},
        {[&] { driver->openShift(); }, 0}, {[&] { driver->zReport(); }, 0}, {[&] { driver->xReport(); }, 0},
        {[&] { driver->getDateTime(); }, 0}};
    for (const auto& [call, errors] : calls) {
        const MessageLog log;
        EXPECT_EQ(thrown(call), "FrWaitForPaperException: Конец бумаги");
        const std::vector<std::string> lines = MessageLog::taken();
        EXPECT_EQ(std::count(lines.begin(), lines.end(), "error frdriver.spf_4: Конец бумаги"), errors);
    }
}

TEST_F(FrSpfTest, describesTheDevice)
{
    const spfxml::SpfStatus now = status("1013=0010512|PaperWidth=48");
    EXPECT_CALL(command(), getStatus()).WillRepeatedly(Return(now));
    EXPECT_CALL(command(), getDateTime()).WillOnce(Return(QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9))));
    driver->setDeviceInfo();
    const QString producer = driver->getDeviceInfo().getProducerName(false);
    EXPECT_EQ(driver->getDeviceStateDescription().join(QLatin1Char('\n')),
        QStringLiteral("Производитель: 2 ") + producer
            + QStringLiteral("\nМодель: 5 СП802-Ф\nНомер: 0010512\nСкорость подключения: 115200\n"
                             "Дата: 01.03.2026 Время: 14:05:09\n\n")
            + now.toString());
}

} // namespace
