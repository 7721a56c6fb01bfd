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

    int speed() const { return defaultSpeed; }
    quint64 options() const { return optionMask; }

    QSharedPointer<StrictMock<MockSpfFrCommand>> mock;
};

class TailStore : public hw::ParamManager
{
public:
    TailStore() { MockFactory<hw::ParamManager>::mocked = this; }
    TailStore(const TailStore&) = delete;
    TailStore& operator=(const TailStore&) = delete;
    ~TailStore() override { MockFactory<hw::ParamManager>::mocked = nullptr; }

    QList<QString> getTailLines(const DeviceInfo&, quint32 deviceId) const override
    {
        return deviceId == 4 ? lines : QList<QString>{QStringLiteral("чужой")};
    }

    QList<QString> lines;
};

spfxml::ShiftStatus shift(bool isOpen)
{
    return spfxml::ShiftStatus(
        answerWith({{QStringLiteral("ShiftState"), isOpen ? QStringLiteral("1") : QStringLiteral("0")}}));
}

spfxml::SpfStatus status(const QString& number, int width)
{
    return {
        answerWith({{QStringLiteral("1013"), number}, {QStringLiteral("KKTFWVersion"), QStringLiteral("v2")},
            {QStringLiteral("PaperWidth"), QString::number(width)}}),
        QDomDocument()};
}

class FrSpfTest : public testing::Test
{
protected:
    FrSpfTest()
    {
        settings.setDeviceId(4);
        driver.reset(new TestedFrSpf(&serial, &settings, nullptr));
        driver->portOpen();
    }

    MockSpfFrCommand& command() { return *driver->mock; }

    NiceMock<MockSerialDriver> serial;
    FrSpfSettings settings;
    QScopedPointer<TestedFrSpf> driver;
    TailStore store;
};

TEST_F(FrSpfTest, setsItsOptionsAndSpeed)
{
    EXPECT_EQ(driver->options(), 0x1081080E16u);
    EXPECT_EQ(driver->speed(), 115200);
}

TEST_F(FrSpfTest, opensThePort)
{
    EXPECT_CALL(serial,
        portOpen(QSerialPort::Baud115200, QSerialPort::NoParity, QSerialPort::Data8, QSerialPort::OneStop))
        .WillOnce(Throw(ComDriverException(QStringLiteral("Порт занят"))));
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
    EXPECT_CALL(command(), getStatus()).WillOnce(Return(status(QStringLiteral("0010312"), 48)));
    EXPECT_CALL(command(), setTail(_)).Times(2);
    driver->setConnection();
    driver->init();
    driver->init();
    const DeviceInfo info = driver->getDeviceInfo();
    EXPECT_EQ(info.getProducerCode(), QStringLiteral("2"));
    EXPECT_EQ(info.getNumber(), QStringLiteral("0010312"));
    EXPECT_EQ(info.getFirmwareVersion(), QStringLiteral("v2"));
    EXPECT_EQ(info.getClicheLineCount(), 4u);
    EXPECT_EQ(info.getTailLineCount(), 30u);
    EXPECT_EQ(info.getBandWidthInfo(), driver->getBandWidthFonts());
}

TEST_F(FrSpfTest, derivesModelAndFontsFromTheStatus)
{
    const struct
    {
        const char* number;
        int width;
        const char* code;
        const char* name;
        unsigned large;
        unsigned small;
    } cases[] = {
        {"0010512", 32, "5", "СП802-Ф", 16, 44},
        {"0010312", 48, "3", "СП402-Ф", 24, 64},
        {"0010199", 47, "1", "ЧекВей7-Ф", 23, 65},
        {"00002", 30, "2", "СП101-Ф", 22, 42},
        {"8018018", 48, "80", "Неизвестная модель", 24, 64},
        {"001", 48, "0", "Неизвестная модель", 24, 64},
        {"001x5", 48, "0", "Неизвестная модель", 24, 64},
    };
    for (const auto& c : cases) {
        EXPECT_CALL(command(), getStatus()).WillOnce(Return(status(QString::fromUtf8(c.number), c.width)));
        driver->setDeviceInfo();
        EXPECT_EQ(driver->getDeviceInfo().getModelCode().toStdString(), c.code);
        EXPECT_EQ(driver->getDeviceInfo().getModelName().toStdString(), c.name);
        const auto widths = driver->getBandWidthFonts();
        EXPECT_EQ(widths.size(), 8);
        for (const int font : {0, 1, 2, 3, 6, 7})
            EXPECT_EQ(widths.value(static_cast<EFrDriver::FontTypes>(font)), static_cast<unsigned>(c.width));
        EXPECT_EQ(widths.value(EFrDriver::LargeFont), c.large) << c.number;
        EXPECT_EQ(widths.value(EFrDriver::SmallFont), c.small) << c.number;
    }
}

TEST_F(FrSpfTest, cutsTheEmptyEndOfTheTail)
{
    const QString a = QStringLiteral("a");
    const QString blank = QStringLiteral(" \t");
    const std::pair<QList<QString>, QList<QString>> cases[]
        = {{{a, {}, blank}, {a}}, {{{}, a, {}}, {{}, a}}, {{blank, {}}, {}}, {{}, {}}};
    for (const auto& [lines, expected] : cases) {
        store.lines = lines;
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
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre("info frdriver.spf_4: Открытие смены", "info frdriver.spf_4: Смена в ФР открыта",
            "info frdriver.spf_4: Установка даты/времени в ККМ: 01.03.2026 14:05:09",
            "info frdriver.spf_4: Невозможно выполнить синхронизацию времени, смена в ФР открыта",
            "info frdriver.spf_4: Снятие суточного отчета с гашением",
            "info frdriver.spf_4: Команда выполнена",
            "info frdriver.spf_4: Снятие отчета о текущем состоянии расчетов"));

    EXPECT_CALL(command(), getShiftStatus()).WillRepeatedly([] { return shift(false); });
    EXPECT_CALL(command(), shiftOpen());
    driver->openShift();
    EXPECT_CALL(command(), setDateTime(time));
    EXPECT_TRUE(driver->setDateTime(time));
    EXPECT_TRUE(driver->zReport().isEmpty());
    EXPECT_EQ(
        thrown([&] { driver->accountingReport(); }), "FrCommandException: Необходимо закрыть смену в ФР");
    EXPECT_EQ(MessageLog::taken().at(4), "info frdriver.spf_4: Смена в ФР закрыта");
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
    EXPECT_CALL(command(), getStatus()).WillRepeatedly(Return(status(QStringLiteral("0010512"), 48)));
    EXPECT_CALL(command(), getDateTime()).WillOnce(Return(QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9))));
    driver->setDeviceInfo();
    const QStringList lines = driver->getDeviceStateDescription();
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(
        lines.at(0), QStringLiteral("Производитель: 2 ") + driver->getDeviceInfo().getProducerName(false));
    EXPECT_EQ(lines.mid(1, 5),
        (QStringList{QStringLiteral("Модель: 5 СП802-Ф"), QStringLiteral("Номер: 0010512"),
            QStringLiteral("Скорость подключения: 115200"),
            QStringLiteral("Дата: 01.03.2026 Время: 14:05:09"), QString()}));
    EXPECT_EQ(lines.at(6), status(QStringLiteral("0010512"), 48).toString());
}

} // namespace
