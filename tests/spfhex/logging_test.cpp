// What service engineers read: each operation's lines with their levels, in order; and the port that is
// closed.

#include "barcode.h"
#include "fiscaldocument.h"
#include "frparameter.h"
#include "frpayment.h"
#include "frposition.h"
#include "hexdriver.h"

#include <QJsonObject>

#include <functional>

using namespace hw::fr;

namespace {

using Driver = HexDriver&;

struct Logging
{
    std::function<void(HexDriver&)> call;
    std::string lines;
    const char* answers = "";
};

const FrPosition tea(QStringLiteral("Чай"), 10.0, 1.0);
const QStringList twoLines{"a", "b"};
const QDateTime noon(QDate(2024, 2, 1), QTime(12, 0));
const char* const shiftIsOpen = "A0=0|4|0";
const std::string identity = "d Получение номера версии модели ККТ; d Получение заводского номера ККТ; "
                             "d Получение номера релиза; i …; ";
const std::string fiscalDrive = "d Получение статуса ФН; d Получение номера последнего ФД; "
                                "d Получение даты/времени последнего ФД; d Получение заводского номера ФН; ";
const std::string validity
    = "d Получение даты срока действия ФН; d Получение количества доступных регистраций; "
      "d Получение количества проведённых регистраций; ";
const std::string exchangeWithOfd
    = "i Получение статуса информационного обмена; d Получение статуса соединения с ОФД; "
      "d Получение даты/времени первого непереданного документа; "
      "d Получение номера первого непереданного документа; i …";
const std::string driveDescription = "i Получение описания состояния ФН устройства; " + fiscalDrive + validity
    + "d Получение версии ФН; d Описание состояния ФН получено";
const std::string ffdVersion = "i Получение версии ФФД; d Получение версии ФФД";

std::string repeated(int times, const std::string& lines)
{
    std::string text;
    while (times-- > 0)
        text += lines;
    return text;
}

FrPosition markedTea()
{
    FrPosition position = tea;
    position.setMarkingCode(QStringLiteral("0104600439931256215Qbag!93Zjqw"), MarkTobacco);
    position.setRequisite({EFrDriver::SupplierInn, QStringLiteral("77")});
    position.setRequisite({EFrDriver::ItemAgentType, 64});
    return position;
}

// All of these ask for an open port before they send anything.
const std::vector<Logging> askingForThePort{
    {[](Driver d) { d.drawerOpen(); }, "i Открытие денежного ящика; d Открытие денежного ящика; done"},
    {[](Driver d) { d.isCashDrawerOpened(); },
        "i Проверка статуса денежного ящика; d Получение статуса денежного ящика; done"},
    {[](Driver d) { d.setDateTime(noon); },
        "i Установка даты/времени в ККМ: 01.02.2024 12:00:00; d Установка даты/времени ККТ"},
    {[](Driver d) { d.getDateTime(); },
        "i Получение даты/времени из ККМ; d Получение даты/времени ККТ; "
        "i Дата/время ККМ: 01.02.2024 15:30:45"},
    {[](Driver d) { d.openShift(); },
        "d Запрос статуса состояния ККТ; i Открытие смены; d Открытие смены; done"},
    {[](Driver d) { d.openShift(); }, "d Запрос статуса состояния ККТ", shiftIsOpen},
    {[](Driver d) { d.isShiftOpen(); }, "i Проверка открытости смены; d Запрос статуса состояния ККТ"},
    {[](Driver d) { d.getLastShiftNumber(); },
        "i Получение номера последней смены; d Получение номера текущей смены; "
        "i Команда выполнена, номер последней смены: 41"},
    {[](Driver d) { d.getFrDocNum(); },
        "i Получение номера документа; "
        "d Получение номера следующего фискального чека в пределах открытой смены"},
    // Start of work: one that is not needed, a device that is to be started, a document that was left open
    {[](Driver d) { d.init(); },
        "i Инициализация ККМ; d Запрос статуса состояния ККТ; d Инициализация ККТ; " + identity
            + "i Инициализация выполнена",
        "A0=0|1|0"},
    {[](Driver d) { d.init(); },
        "i Инициализация ККМ; d Запрос статуса состояния ККТ; " + identity
            + "d Отмена документа; i Инициализация выполнена",
        "A0=0|4|770"},
    {[](Driver d) { d.init(); },
        "i Инициализация ККМ; d Запрос статуса состояния ККТ; " + identity
            + "d Завершение документа; i Инициализация выполнена",
        "A0=0|4|4098"},
    {[](Driver d) { d.setConnection(); },
        "i Соединение с устройством; " + identity + "i Соединение установлено"},
    // Receipts
    {[](Driver d) { d.checkOpen(FiscalDocument(CheckSaleReturn)); },
        "i Открытие чека (1 - возврат продажи), оператор: ; d Открытие документа; "
        "d Получение схемы налогооблажения; done"},
    {[](Driver d) { d.checkClose({}); }, "i Закрытие чека; d Завершение документа; done"},
    {[](Driver d) { d.checkCancel(); }, "i Аннулирование чека; d Отмена документа; done"},
    {[](Driver d) { d.checkWaitForPrint(); },
        "i Ожидание завершения печати чека; d Запрос статуса состояния ККТ; d Завершение документа; done",
        "A0=0|4|2050"},
    {[](Driver d) { d.checkTotal(); }, "i Переход в подытог; d Подытог; done"},
    {[](Driver d) { d.checkPay(FrPayment(0, -0.001)); }, "i Расчет по чеку: (0) 0.00; d Оплата; done"},
    {[](Driver d) { d.checkAddPosition(tea); },
        "i Добавление позиции в чек: …; d Регистрация данных агента; d Добавление предмета расчета; done"},
    {[](Driver d) { d.checkAddPosition(markedTea()); },
        "i Добавление позиции в чек: …; d Регистрация данных агента; "
        "d Добавление данных о маркировке для товарной позиции; d Добавление предмета расчета; done"},
    {[](Driver d) { d.checkPrint(twoLines); }, "i Печать строк; d Печать текста; d Печать текста; done"},
    // Money and text documents
    {[](Driver d) { d.moneyCheckOpen(CheckCashOut, {}); },
        "i Открытие чека: выем; d Открытие документа; d Получение схемы налогооблажения; done"},
    {[](Driver d) { d.moneyCheckPrint(twoLines); }, "i Печать строк; d Печать текста; d Печать текста; done"},
    {[](Driver d) { d.moneyCheckClose(1.0); },
        "i Закрытие чека внесения/выема; d Внесение/изъятие суммы; d Завершение документа; done"},
    {[](Driver d) { d.textDocOpen(CheckNonFiscal); },
        "i Открытие чека: нефискальный; d Открытие документа; d Получение схемы налогооблажения; done"},
    {[](Driver d) { d.textDocPrint({}); }, "i Печать строк; done"},
    {[](Driver d) { d.textDocClose(); }, "i Закрытие текстового документа; d Завершение документа; done"},
    {[](Driver d) {
         d.barcodePrint({"12", Barcode::Qr, 0, 0, 0});
     },
        "i Печать штрих-кода (12); d Печать QR-кода; done"},
    {[](Driver d) {
         d.barcodePrint({"12", Barcode::Ean13, 0, 0, 0});
     },
        "i Печать штрих-кода (12); d Печать штрихкода; done"},
    // Fiscal drive
    {[](Driver d) { d.getAllTaxSystems(); },
        "i Получение списка систем налогообложения; d Получение схемы налогооблажения"},
    {[](Driver d) { d.getDefaultTaxSystem(); },
        "i Получение списка систем налогообложения; d Получение схемы налогооблажения"},
    {[](Driver d) { d.getInn(); }, "i Получение ИНН; d Получение ИНН пользователя ККТ"},
    {[](Driver d) { d.getFfdVersion(); }, ffdVersion},
    {[](Driver d) { d.printFnDocument(7); },
        "i Печать копии фискального документа по номеру; d Печать документа из ФН"},
    {[](Driver d) { d.getOfdStatusInfo(); }, exchangeWithOfd},
    {[](Driver d) { d.getFnInfo(); },
        "i Получение данных о состоянии фискального накопителя; " + validity + fiscalDrive + exchangeWithOfd
            + "; d Получение версии ФН; d Получение версии ФФД; d Получение количества неподтверждённых или "
              "невыгруженных уведомлений реализации маркированного товара; done"},
    {[](Driver d) { d.getFnStateDescription(); }, driveDescription},
    {[](Driver d) { d.getDeviceStateDescription(); },
        "i Получение описания состояния устройства; d Получение регистрационного номера ККТ; "
        "d Получение ИНН пользователя ККТ; i Получение даты/времени из ККМ; "
        "d Получение даты/времени ККТ; i Дата/время ККМ: 01.02.2024 15:30:45; "
        "d Запрос статуса состояния ККТ; "
            + driveDescription + "; " + ffdVersion + "; i Описание состояния получено"},
    // Reports and counters
    // The c is Latin.
    {[](Driver d) { d.zReport(); },
        "i Снятие суточного отчета \x63 гашением; d Запрос статуса состояния ККТ; w Смена не открыта"},
    {[](Driver d) { d.zReport(); },
        "i Снятие суточного отчета \x63 гашением; d Запрос статуса состояния ККТ; "
        "d Печать отчета о закрытии смены; done",
        shiftIsOpen},
    {[](Driver d) { d.xReport(); },
        "i Снятие суточного отчета без гашения; d Печать текущих итогов смены; done"},
    {[](Driver d) { d.accountingReport(); },
        "i Печать отчета о текущем состоянии расчетов; d Запрос статуса состояния ККТ; "
        "d Печать отчета о текущем состоянии расчетов; done"},
    {[](Driver d) { d.getCheckCounters(CheckSaleReturn); },
        "i Запрос счетчиков чека: (1) - возврат продажи; d Получение сумм возврата прихода по типам платежа"},
    {[](Driver d) { d.getMoneyCounters(CheckCashIn); },
        "i Запрос счетчиков чека: внесение; d Получение количества оформленных за смену документов; "
        "d Получение сумм по оформленным за смену документам"},
    {[](Driver d) { d.getCountersDescription(); },
        "i Получение описания счетчиков; i Запрос счетчиков чека: (0) - продажа; "
        "d Получение сумм прихода по типам платежа; i Запрос счетчиков чека: (1) - возврат продажи; "
        "d Получение сумм возврата прихода по типам платежа; i Описание счетчиков получено"},
    {[](Driver d) { d.getKkmRegisterBeg(); },
        "i Получение счетчиков ККМ на начало смены; d Получение суммы наличных в денежном ящике; "
        "d Получение номера текущей смены; d Получение регистрационного номера ККТ; "
        "d Получение заводского номера ФН; done"},
    {[](Driver d) { d.getKkmRegisterEnd(); },
        "i Получение счетчиков ККМ на конец смены; d Получение количества оформленных за смену документов; "
        "d Получение сумм по оформленным за смену документам; d Получение сумм прихода по типам платежа; "
        "d Получение сумм возврата прихода по типам платежа; d Получение суммы наличных в денежном ящике; "
        "d Получение параметра 22 0; d Получение параметра 22 1; d Получение параметра 22 2; "
        "d Получение параметра 22 3; d Получение параметра 22 4; done"},
    // Parameters
    {[](Driver d) { d.setParams({FrParameter(1, 2, 6, QStringLiteral("1"))}); },
        "i Программирование параметров; d Установка параметра [6,2] = 1; i Программирование параметров выполнено"},
    {[](Driver d) { d.setParams({}); },
        "i Программирование параметров; i Программирование параметров выполнено"},
    {[](Driver d) { d.setCliche({}); },
        "i Программирование строк клише; i Программирование параметров; "
        "i Программирование параметров выполнено; i Программирование завершено"},
    {[](Driver d) { d.setDefaults(); },
        "i Программирование настроек ФР по умолчанию; i Программирование параметров; "
        "d Установка параметра [4,0] = 0; e Отказ; i Установлены настройки по умолчанию",
        "A2=refused"},
    {[](Driver d) { d.getParametersDescription(); },
        "i Получение описания параметров; "
            + repeated(76, "d Получение параметра …; w Ошибка при получении параметра: Отказ; ")
            + "i Описание параметров получено",
        "A1=refused"},
    {[](Driver d) { d.readParameters({QStringLiteral("1.0")}); },
        "i Получение параметров; d Получение параметра 1 0; i Параметры получены"},
    {[](Driver d) { d.setTail({}); },
        "i Программирование строк рекламного текста; i Программирование параметров; "
        "i Программирование параметров выполнено; i Программирование завершено"},
    {[](Driver d) { d.setTail({"a"}); },
        "i Программирование строк рекламного текста; i Программирование параметров; "
        "d Установка параметра [21,0] = a; e Отказ; i Программирование завершено",
        "A2=refused"},
    {[](Driver d) { d.setGraphicCliche(QStringLiteral("none.png")); },
        "i Программирование графического клише; e Не удалось загрузить изображение"},
    {[](Driver d) { d.clearGraphicCliche(); }, "i Очистка графического клише; d Очистка логотипа; done"},
};

// These do not look at the port.
const std::vector<Logging> goingOn{
    {[](Driver d) {
         d.checkMarkingCode({1, "A", 1.0, 0}, true);
     },
        "i Проверка кода маркировки; d Проверка КМ в ФН", "3D=15"},
    {[](Driver d) { d.clearMarkingCodes(); },
        "i Очистка результатов проверки КМ в ФН; d Очистка результатов проверки КМ в ФН; w Нет связи с ФР",
        "3F=no connection"},
    {[](Driver d) { d.registration({}, {}, {}, {}, {}); },
        "i Регистрация/перерегистрация; d Регистрация/перерегистрация ККТ; "
        "d Получение всех данных регистрации/перерегистрации; done"},
    {[](Driver d) { EXPECT_EQ(d.getDefaultPaymentType(), 0); }, ""},
    {[](Driver d) { d.setFont({EFrDriver::InvertedFont}); }, ""},
    {[](Driver d) { d.resetFont(); }, ""},
};

} // namespace

TEST_F(HexDriverTest, eachOperationTellsWhatItDoes)
{
    const auto usual = device.answers;
    for (const std::vector<Logging>* table : {&askingForThePort, &goingOn}) {
        for (const Logging& row : *table) {
            device.answer(QString::fromUtf8(row.answers));
            driver.portState = table == &goingOn ? 1 : 0;
            logged();
            row.call(driver);
            const std::string log = logged();
            EXPECT_TRUE(matches(log, row.lines)) << "expected " << row.lines << "\n     got " << log;
            device.answers = usual;
        }
    }
}

TEST_F(HexDriverTest, aClosedPortIsRefusedBeforeAByteIsSent)
{
    driver.sent();
    driver.portState = 1;
    HexDriver withoutPort(nullptr, &settings);
    for (const Logging& row : askingForThePort) {
        logged();
        EXPECT_EQ(thrown([&] { row.call(driver); }), "FrNoConnectionException: Необходимо открыть порт")
            << row.lines;
        EXPECT_EQ(thrown([&] { row.call(withoutPort); }),
            "FrNoConnectionException: Ошибка инициализации драйвера порта")
            << row.lines;
        EXPECT_EQ(driver.sent() + withoutPort.sent(), "") << row.lines;
        EXPECT_EQ(logged().find("done"), std::string::npos) << row.lines;
    }
}
