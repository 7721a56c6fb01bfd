#include "fiscaldocument.h"
#include "frpayment.h"
#include "hexdriver.h"

#include <QJsonObject>

#include <functional>

using namespace hw::fr;
using testing::EndsWith;
using testing::HasSubstr;

TEST_F(HexDriverTest, portIsOpenedWithTheLinesSettings)
{
    for (const int failing : {1, 2, 3, 0}) {
        serial.done.clear();
        serial.failingStep = failing;
        driver.portState = 1;
        EXPECT_EQ(thrown([this] { driver.portOpen(); }),
            failing == 0 ? "" : "FrNoConnectionException: Невозможно открыть порт");
        EXPECT_EQ(serial.done, std::string("fdo", failing == 0 ? 3U : static_cast<size_t>(failing)));
        EXPECT_EQ(driver.portState, failing == 0 ? 0 : 1);
        EXPECT_EQ(logged(), failing == 0 ? "i Открытие порта; i Порт открыт" : "i Открытие порта; e Обрыв");
    }
    driver.portClose();
    EXPECT_EQ(serial.done, "fdoc");
    EXPECT_EQ(driver.portState, 1);

    HexDriver withoutPort(nullptr, &settings);
    withoutPort.portClose();
    EXPECT_EQ(thrown([&] { withoutPort.portOpen(); }),
        "FrNoConnectionException: Ошибка инициализации драйвера порта");
    EXPECT_EQ(logged(), "i Закрытие порта; i Порт закрыт; i Закрытие порта; i Открытие порта");
}

TEST_F(HexDriverTest, connectionReadsTheIdentity)
{
    QString names;
    for (const char* const answer : {"A5 0|=4", "A5 0|=801", "A5 0|=5"}) {
        device.answer(answer);
        driver.setConnection();
        names += driver.getDeviceInfo().getModelName() + ';';
    }
    EXPECT_EQ(names, "Неизвестная модель;СП801-Ф;СП802-Ф;");
    const DeviceInfo info = driver.getDeviceInfo();
    EXPECT_EQ(info.getProducerCode() + info.getModelCode() + info.getNumber() + info.getFirmwareVersion(),
        "250012377");
    EXPECT_EQ(info.getBandWidth(), 48U);
    EXPECT_EQ(driver.getBandWidthFonts().values(), (QList<unsigned>{44, 44, 24, 64, 24, 64, 44, 44}));
    EXPECT_EQ(driver.optionMask, 0x1001080E16U);
    EXPECT_THAT(logged(), EndsWith("i " + info.toString().toStdString() + "; i Соединение установлено"));

    driver.cashierLogin({QString(60, QChar(0x42F)), {}, QStringLiteral("123456789012")});
    driver.sent();
    driver.openShift();
    EXPECT_EQ(driver.sent(), "A0; 6B " + QString(48, QChar(0x42F)).toStdString() + "|123456789012|");
}

TEST_F(HexDriverTest, fiscalDriveIsReadQueryByQuery)
{
    const FnInfo info = driver.getFnInfo();
    EXPECT_EQ(driver.sent(),
        "A4 5|; A4 6|; A4 7|; A4; A4 1|; A4 2|; A4 3|; A4 8|; A4 11|; A4 10|; A4 15|; A4 12|; A4 14|");
    const FnUtils::ValidityDate& validity = info.validityDate;
    EXPECT_EQ(std::tuple(validity.date, validity.availableRegistrations, validity.registrationsMade),
        std::tuple(QDate(2030, 8, 31), 11, 2));
    const FnStatusInfo& fn = info.fnStatus;
    EXPECT_EQ(std::tuple(fn.lifePhase, fn.currentDocType, fn.hasDocData, fn.isShiftOpen, fn.warningFlags),
        std::tuple(3, 1, false, true, 6));
    EXPECT_EQ(std::tuple(fn.lastFdNumber, fn.lastFdDateTime, fn.fnNumber),
        std::tuple(1234U, QDateTime(QDate(2024, 2, 1), QTime(15, 30, 45)), "9960440300000001"));
    const OfdStatusInfo& ofd = info.ofdStatus;
    EXPECT_EQ(std::tuple(ofd.isConnected, ofd.firstUnsentDateTime, ofd.firstUnsentNumber),
        std::tuple(1, QDateTime(QDate(2024, 1, 31), QTime(0, 1, 2)), 1230));
    EXPECT_EQ(info.fnVersion, QStringLiteral("fn v1(опытный)"));
    EXPECT_EQ(info.ffdVersion, "1.2");
    EXPECT_EQ(info.unsentNotifications, 78);
    EXPECT_THAT(logged(), HasSubstr("; i " + ofd.toString().toStdString() + "; d Получение версии ФН; "));

    device.answer(QStringLiteral("A4 8|=2; A4 15|=fn|1; A7=310224|250000"));
    EXPECT_FALSE(device.getOfdConnectionStatus());
    EXPECT_EQ(device.getFnVersion(), QStringLiteral("fn(серийный)"));
    EXPECT_FALSE(driver.getDateTime().isValid());
}

TEST_F(HexDriverTest, serviceScreenDescribesDeviceAndFiscalDrive)
{
    driver.setConnection();
    const FnInfo info = driver.getFnInfo();
    const spfhex::StateStatus status = device.requestStateStatus();
    driver.sent();
    const QString dashes(22, QLatin1Char('-'));
    const QStringList lines = QStringList{"Производитель: 2 Сервис Плюс", "Модель: 5 СП802-Ф", "Номер: 00123",
                                  "Скорость подключения: 115200", "Рег. номер: 0000000001 ИНН: 7712345678",
                                  "Дата: 01.02.2024 Время: 15:30:45"}
        + status.getFatalStateStatus() + status.getCurrentFlagsStatus() + status.getDocumentStatus()
        + QStringList{dashes + " ФН " + dashes} + info.fnStatus.getStrInfo() + info.validityDate.getStrInfo()
        + QStringList{"Версия: fn v1(опытный)", "", "Версия ФФД: 1.2"};
    EXPECT_EQ(driver.getDeviceStateDescription(), lines);
    EXPECT_EQ(
        driver.sent(), "A5 10|; A5 9|; A7; A0; A4; A4 1|; A4 2|; A4 3|; A4 5|; A4 6|; A4 7|; A4 15|; A4 12|");
    EXPECT_THAT(logged(), HasSubstr("; d Описание состояния ФН получено; i Получение версии ФФД; "));
}

TEST_F(HexDriverTest, countersAndRegistersTakeTheDevicesPlaces)
{
    driver.setConnection();
    driver.sent();
    for (const CheckType type : {CheckCashIn, CheckCashOut, CheckSale}) {
        const MoneyCounters counters = driver.getMoneyCounters(type);
        EXPECT_EQ(counters.count, type == CheckCashIn ? 111 : 112);
        EXPECT_EQ(counters.sum, type == CheckCashIn ? 9.5 : 10.5);
        EXPECT_EQ(driver.sent(), "A5 13|; A5 14|");
    }
    EXPECT_EQ(driver.getCountersDescription().join(QLatin1Char(';')).toStdString(),
        "------------------- Счетчики -------------------;"
        "продажа:; тип 0 - 10.50; тип 1 - 20.00; тип 2 - 30.00; тип 3 - 40.00; тип 4 - 50.00;"
        "возврат продажи:; тип 0 - 1.00; тип 1 - 2.00; тип 2 - 3.00; тип 3 - 4.00; тип 4 - 5.25");
    driver.sent();

    const KkmRegisterBeg begin = driver.getKkmRegisterBeg();
    EXPECT_EQ(driver.sent(), "A5 5|; A5 1|; A5 10|; A4 3|");
    EXPECT_EQ(std::tuple(begin.producerCode, begin.producerName, begin.modelCode, begin.modelName),
        std::tuple(2, "Сервис Плюс", 5, "СП802-Ф"));
    EXPECT_EQ(std::tuple(begin.serialNumber, begin.totalSales, begin.cashInDrawer, begin.shiftNumber),
        std::tuple("00123", QVariant(), QVariant(999.99), 42));
    EXPECT_EQ(begin.registrationNumber + begin.fnNumber, "00000000019960440300000001");

    device.answer(QStringLiteral(
        "A1 22|0|={нал}; A1 22|1|={карта}; A1 22|2|={аванс}; A1 22|3|={кредит}; A1 22|4|={иное}"));
    const QVariant none;
    const QList<QVariant> end{none, 999.99, none, 100, 0.5, 10.5, 20.0, 30.0, 40.0, 50.0, none, 101, 1.5, 1.0,
        2.0, 3.0, 4.0, 5.25, none, "нал", "карта", "аванс", "кредит", "иное", none, 9.5, 111, 10.5, 112};
    EXPECT_EQ(driver.getKkmRegisterEnd().toList(), end);
    EXPECT_EQ(driver.sent(),
        "A5 13|; A5 14|; A5 3|; A5 4|; A5 5|; A1 22|0|; A1 22|1|; A1 22|2|; A1 22|3|; A1 22|4|");
    EXPECT_THAT(logged(), EndsWith("d Получение параметра 22 4; done"));
}

TEST_F(HexDriverTest, whatCannotBeDoneIsRefusedBeforeAnythingFurtherIsSent)
{
    const char* const badAnswer = "FrCommandException: Некорректный ответ от ФР";
    const char* const tenSums = "A5 14|=1|2|3|4|5|6|7|8|9|10";
    using Row = std::tuple<std::function<void(HexDriver&)>, const char*, const char*, const char*>;
    const std::vector<Row> table{
        {[](HexDriver& d) { d.checkOpen(FiscalDocument(CheckCashIn)); }, "", "",
            "FrCommandException: Тип чека не поддерживается ФР"},
        {[](HexDriver& d) { d.checkPay(FrPayment(5, 1.0)); }, "", "",
            "FrCommandException: Тип оплаты не поддерживается ФР"},
        {[](HexDriver& d) { d.accountingReport(); }, "A0=0|4|0", "A0",
            "FrCommandException: Смена должна быть закрыта"},
        // Answers that are a field short, and one without a tax system
        {[](HexDriver& d) { d.init(); }, "A0=0|1|0; A7=010224", "A0; A7", badAnswer},
        {[](HexDriver& d) { d.getFnStateDescription(); }, "A4=3|1|0|1", "A4", badAnswer},
        {[](HexDriver& d) { d.recorder->getIsmNotSentCount(); }, "A4 14|=1|2|3|4|5|6", "A4 14|", badAnswer},
        {[](HexDriver& d) { d.registration({}, {}, {}, {}, {}); }, "C0=1|2|3|4|5|6|7|8|9|10|11|12", "C0",
            badAnswer},
        {[](HexDriver& d) { d.getMoneyCounters(CheckCashOut); }, tenSums, "A5 13|; A5 14|", badAnswer},
        {[](HexDriver& d) { d.getKkmRegisterEnd(); }, "A5 4|=1|2|3|4", "A5 13|; A5 14|; A5 3|; A5 4|",
            badAnswer},
        {[](HexDriver& d) { d.getCountersDescription(); }, "A5 4|=refused", "A5 3|; A5 4|",
            "FrCommandException: Отказ"},
    };
    const auto usual = device.answers;
    for (const auto& [call, answers, sent, exception] : table) {
        SCOPED_TRACE(std::string(sent) + ", answers " + answers);
        device.answer(answers);
        EXPECT_EQ(thrown([&call = call, this] { call(driver); }), exception);
        EXPECT_EQ(driver.sent(), sent);
        device.answers = usual;
    }
    EXPECT_THAT(logged(), testing::EndsWith("e Отказ"));
}
