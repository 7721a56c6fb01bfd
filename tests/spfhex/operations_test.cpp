// What an operation sends, and what service engineers read of it: the lines with their levels, in order; and
// the port that is closed.

#include "barcode.h"
#include "fiscaldocument.h"
#include "frparameter.h"
#include "frpayment.h"
#include "frposition.h"
#include "hexdriver.h"
#include "markedposition.h"

#include <QJsonObject>

#include <functional>

using namespace hw::fr;

namespace {

using Driver = HexDriver&;

struct Operation
{
    std::function<void(HexDriver&)> call;
    /// The frames; empty where other tests tell them.
    const char* sent;
    std::string lines;
    const char* answers = "";
};

const Barcode qrCode{"Код", Barcode::Qr, 3, 4, 5};
const Barcode code128{"Код", Barcode::Code128, 3, 4, 5};
const FrPosition tea(QStringLiteral("Чай"), 10.0, 1.0);
const QStringList header{"ООО", "Ёж"};
const QList<common::TaxSystemType> systems{common::TaxSystemGeneral, common::TaxSystemPatent};
const QDateTime moment(QDate(2024, 2, 1), QTime(15, 30, 45));
const MarkedPosition measured{2, QStringLiteral("ABя"), 0.25, 11};
const MarkedPosition piece{3, QStringLiteral("0104600439931256215Qbag!93Zjqw"), 1.0, 0};
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

std::string initialisation(const std::string& start, const std::string& end)
{
    return "i Инициализация ККМ; d Запрос статуса состояния ККТ; " + start + identity + end
        + "i Инициализация выполнена";
}

FiscalDocument returnReceipt()
{
    FiscalDocument document(CheckSaleReturn);
    document.setCashierName(QStringLiteral("Петр"));
    document.setCustomerAddress(QStringLiteral("Юрий@почта.рф"));
    document.setTaxSystem(common::TaxSystemSimplifiedIncomeOutcome);
    document.setPrintMode(CheckPrintNone);
    return document;
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
const std::vector<Operation> askingForThePort{
    {[](Driver d) { d.drawerOpen(); }, "80", "i Открытие денежного ящика; d Открытие денежного ящика; done"},
    {[](Driver d) { EXPECT_FALSE(d.isCashDrawerOpened()); }, "A8",
        "i Проверка статуса денежного ящика; d Получение статуса денежного ящика; done", "A8=0"},
    {[](Driver d) { EXPECT_TRUE(d.setDateTime(moment)); }, "A3 010224|153045|",
        "i Установка даты/времени в ККМ: 01.02.2024 15:30:45; d Установка даты/времени ККТ"},
    {[](Driver d) { d.getDateTime(); }, "",
        "i Получение даты/времени из ККМ; d Получение даты/времени ККТ; "
        "i Дата/время ККМ: 01.02.2024 15:30:45"},
    {[](Driver d) { d.openShift(); }, "A0; 6B Анна Ким|7701|",
        "d Запрос статуса состояния ККТ; i Открытие смены; d Открытие смены; done"},
    {[](Driver d) { d.openShift(); }, "A0", "d Запрос статуса состояния ККТ", shiftIsOpen},
    {[](Driver d) { d.isShiftOpen(); }, "", "i Проверка открытости смены; d Запрос статуса состояния ККТ"},
    {[](Driver d) { d.getLastShiftNumber(); }, "",
        "i Получение номера последней смены; d Получение номера текущей смены; "
        "i Команда выполнена, номер последней смены: 41"},
    {[](Driver d) { EXPECT_EQ(d.getFrDocNum(), "0012"); }, "A5 7|",
        "i Получение номера документа; "
        "d Получение номера следующего фискального чека в пределах открытой смены"},
    // Start of work: nothing to do, a device that is to be started, a document that was left open
    {[](Driver d) { d.init(); }, "A0; A5 0|; A6; A5 0|1|", initialisation("", ""), shiftIsOpen},
    {[](Driver d) { d.init(); }, "A0; A7; 00 010224|153045|; A5 0|; A6; A5 0|1|",
        initialisation("d Инициализация ККТ; ", ""), "A0=0|1|0"},
    {[](Driver d) { d.init(); }, "A0; A5 0|; A6; A5 0|1|; 23", initialisation("", "d Отмена документа; "),
        "A0=0|4|2306"},
    {[](Driver d) { d.init(); }, "A0; A5 0|; A6; A5 0|1|; 22 0|1|0|",
        initialisation("", "d Завершение документа; "), "A0=0|4|2050"},
    {[](Driver d) { d.init(); }, "A0; A7; 00 010224|153045|; A5 0|; A6; A5 0|1|; 22 0|1|0|",
        initialisation("d Инициализация ККТ; ", "d Завершение документа; "), "A0=0|5|4098"},
    {[](Driver d) { d.setConnection(); }, "",
        "i Соединение с устройством; " + identity + "i Соединение установлено"},
    // Receipts
    {[](Driver d) { d.checkOpen({}); }, "C0 10|; 20 2|||7701||2||0|||",
        "i Открытие чека (0 - продажа), оператор: ; d Открытие документа; "
        "d Получение схемы налогооблажения; done"},
    {[](Driver d) { d.checkOpen(returnReceipt()); }, "20 3||{Петр}|7701||4|{Юрий@почта.рф}|1|||",
        "i Открытие чека (1 - возврат продажи), оператор: Петр; d Открытие документа; done"},
    {[](Driver d) { EXPECT_TRUE(d.checkClose({}).isEmpty()); }, "22 0|1|0|",
        "i Закрытие чека; d Завершение документа; done"},
    {[](Driver d) { d.checkCancel(); }, "23", "i Аннулирование чека; d Отмена документа; done"},
    {[](Driver d) { d.checkWaitForPrint(); }, "A0",
        "i Ожидание завершения печати чека; d Запрос статуса состояния ККТ; done", "A0=0|4|1794"},
    {[](Driver d) { d.checkWaitForPrint(); }, "A0; 22 0|1|0|",
        "i Ожидание завершения печати чека; d Запрос статуса состояния ККТ; d Завершение документа; done",
        "A0=0|4|2050"},
    {[](Driver d) { d.checkTotal(); }, "34", "i Переход в подытог; d Подытог; done"},
    {[](Driver d) { d.checkPay(FrPayment(4, 10.126)); }, "35 4|10.13|",
        "i Расчет по чеку: (4) 10.13; d Оплата; done"},
    {[](Driver d) { d.checkPay(FrPayment(0, -0.001)); }, "35 0|0.00|",
        "i Расчет по чеку: (0) 0.00; d Оплата; done"},
    {[](Driver d) { d.checkAddPosition(tea); }, "",
        "i Добавление позиции в чек: …; d Регистрация данных агента; d Добавление предмета расчета; done"},
    {[](Driver d) { d.checkAddPosition(markedTea()); }, "",
        "i Добавление позиции в чек: …; d Регистрация данных агента; "
        "d Добавление данных о маркировке для товарной позиции; d Добавление предмета расчета; done"},
    {[](Driver d) { d.checkPrint(QStringLiteral("Чай\n\t1 /\x01\x7F/").split('/')); },
        "21 {Чай1} |0|; 21 |0|; 21 |0|",
        "i Печать строк; d Печать текста; d Печать текста; d Печать текста; done"},
    // Money and text documents
    {[](Driver d) { d.moneyCheckOpen(CheckCashOut, "x"); }, "C0 10|; 20 5||{Анна Ким}|7701||2||0|||",
        "i Открытие чека: выем; d Открытие документа; d Получение схемы налогооблажения; done"},
    {[](Driver d) {
         d.moneyCheckPrint({"a", "b"});
     },
        "21 a|0|; 21 b|0|", "i Печать строк; d Печать текста; d Печать текста; done"},
    {[](Driver d) { EXPECT_TRUE(d.moneyCheckClose(1500.5).isEmpty()); }, "36 |1500.50|; 22 0|1|0|",
        "i Закрытие чека внесения/выема; d Внесение/изъятие суммы; d Завершение документа; done"},
    {[](Driver d) { d.textDocOpen(CheckNonFiscal); }, "C0 10|; 20 1||{Анна Ким}|7701||2||0|||",
        "i Открытие чека: нефискальный; d Открытие документа; d Получение схемы налогооблажения; done"},
    {[](Driver d) { d.textDocPrint({}); }, "", "i Печать строк; done"},
    {[](Driver d) { d.textDocClose(); }, "", "i Закрытие текстового документа; d Завершение документа; done"},
    {[](Driver d) { d.barcodePrint(qrCode); }, "29 4|1|{Код}|",
        "i Печать штрих-кода (Код); d Печать QR-кода; done"},
    {[](Driver d) { d.barcodePrint(code128); }, "24 3|4|5|8|{Код}|",
        "i Печать штрих-кода (Код); d Печать штрихкода; done"},
    // Fiscal drive
    {[](Driver d) { d.getAllTaxSystems(); }, "",
        "i Получение списка систем налогообложения; d Получение схемы налогооблажения"},
    {[](Driver d) { d.getDefaultTaxSystem(); }, "",
        "i Получение списка систем налогообложения; d Получение схемы налогооблажения"},
    {[](Driver d) { d.getInn(); }, "", "i Получение ИНН; d Получение ИНН пользователя ККТ"},
    {[](Driver d) { d.getFfdVersion(); }, "", ffdVersion},
    {[](Driver d) { d.printFnDocument(4000000000L); }, "65 4000000000|",
        "i Печать копии фискального документа по номеру; d Печать документа из ФН"},
    {[](Driver d) { d.getOfdStatusInfo(); }, "", exchangeWithOfd},
    {[](Driver d) { d.getFnInfo(); }, "",
        "i Получение данных о состоянии фискального накопителя; " + validity + fiscalDrive + exchangeWithOfd
            + "; d Получение версии ФН; d Получение версии ФФД; d Получение количества неподтверждённых или "
              "невыгруженных уведомлений реализации маркированного товара; done"},
    {[](Driver d) { d.getFnStateDescription(); }, "", driveDescription},
    {[](Driver d) { d.getDeviceStateDescription(); }, "",
        "i Получение описания состояния устройства; d Получение регистрационного номера ККТ; "
        "d Получение ИНН пользователя ККТ; i Получение даты/времени из ККМ; "
        "d Получение даты/времени ККТ; i Дата/время ККМ: 01.02.2024 15:30:45; "
        "d Запрос статуса состояния ККТ; "
            + driveDescription + "; " + ffdVersion + "; i Описание состояния получено"},
    // Reports and counters
    // The c is Latin.
    {[](Driver d) { EXPECT_TRUE(d.zReport().isEmpty()); }, "A0",
        "i Снятие суточного отчета \x63 гашением; d Запрос статуса состояния ККТ; w Смена не открыта"},
    {[](Driver d) { EXPECT_TRUE(d.zReport().isEmpty()); }, "A0; 61 {Анна Ким}|7701|",
        "i Снятие суточного отчета \x63 гашением; d Запрос статуса состояния ККТ; "
        "d Печать отчета о закрытии смены; done",
        shiftIsOpen},
    {[](Driver d) { EXPECT_TRUE(d.xReport().isEmpty()); }, "60 {Анна Ким}|",
        "i Снятие суточного отчета без гашения; d Печать текущих итогов смены; done"},
    {[](Driver d) { d.accountingReport(); }, "A0; 6A {Анна Ким}|",
        "i Печать отчета о текущем состоянии расчетов; d Запрос статуса состояния ККТ; "
        "d Печать отчета о текущем состоянии расчетов; done"},
    {[](Driver d) { d.getCheckCounters(CheckSaleReturn); }, "",
        "i Запрос счетчиков чека: (1) - возврат продажи; d Получение сумм возврата прихода по типам платежа"},
    {[](Driver d) { EXPECT_TRUE(d.getCheckCounters(CheckSaleAnnulment).isEmpty()); }, "",
        "i Запрос счетчиков чека: (2) - аннулирование продажи"},
    {[](Driver d) { d.getMoneyCounters(CheckCashIn); }, "",
        "i Запрос счетчиков чека: внесение; d Получение количества оформленных за смену документов; "
        "d Получение сумм по оформленным за смену документам"},
    {[](Driver d) { d.getCountersDescription(); }, "",
        "i Получение описания счетчиков; i Запрос счетчиков чека: (0) - продажа; "
        "d Получение сумм прихода по типам платежа; i Запрос счетчиков чека: (1) - возврат продажи; "
        "d Получение сумм возврата прихода по типам платежа; i Описание счетчиков получено"},
    {[](Driver d) { d.getKkmRegisterBeg(); }, "",
        "i Получение счетчиков ККМ на начало смены; d Получение суммы наличных в денежном ящике; "
        "d Получение номера текущей смены; d Получение регистрационного номера ККТ; "
        "d Получение заводского номера ФН; done"},
    {[](Driver d) { d.getKkmRegisterEnd(); }, "",
        "i Получение счетчиков ККМ на конец смены; d Получение количества оформленных за смену документов; "
        "d Получение сумм по оформленным за смену документам; d Получение сумм прихода по типам платежа; "
        "d Получение сумм возврата прихода по типам платежа; d Получение суммы наличных в денежном ящике; "
        "d Получение параметра 22 0; d Получение параметра 22 1; d Получение параметра 22 2; "
        "d Получение параметра 22 3; d Получение параметра 22 4; done"},
    // Parameters
    {[](Driver d) { d.setParams({FrParameter(1, 2, 6, QStringLiteral("1"))}); }, "",
        "i Программирование параметров; d Установка параметра [6,2] = 1; i Программирование параметров выполнено"},
    {[](Driver d) { d.setParams({}); }, "",
        "i Программирование параметров; i Программирование параметров выполнено"},
    {[](Driver d) { EXPECT_TRUE(d.setCliche(header)); }, "A2 20|0|ООО|; A2 20|1|Ёж|",
        "i Программирование строк клише; i Программирование параметров; "
        "d Установка параметра [20,0] = ООО; d Установка параметра [20,1] = Ёж; "
        "i Программирование параметров выполнено; i Программирование завершено"},
    {[](Driver d) { EXPECT_TRUE(d.setDefaults()); },
        "A2 4|0|0|; A2 5|0|0|; A2 6|0|1|; A2 8|0|0|; A2 11|0|0|; A2 13|0|0|; A2 30|0|1|; A2 38|0|1|; "
        "A2 40|0|0|",
        "i Программирование настроек ФР по умолчанию; i Программирование параметров; "
            + repeated(9, "d Установка параметра …; ")
            + "i Программирование параметров выполнено; i Установлены настройки по умолчанию"},
    {[](Driver d) { EXPECT_FALSE(d.setDefaults()); }, "A2 4|0|0|",
        "i Программирование настроек ФР по умолчанию; i Программирование параметров; "
        "d Установка параметра [4,0] = 0; e Отказ; i Установлены настройки по умолчанию",
        "A2=refused"},
    {[](Driver d) { d.getParametersDescription(); }, "",
        "i Получение описания параметров; "
            + repeated(76, "d Получение параметра …; w Ошибка при получении параметра: Отказ; ")
            + "i Описание параметров получено",
        "A1=refused"},
    {[](Driver d) { d.readParameters({QStringLiteral("1.0")}); }, "",
        "i Получение параметров; d Получение параметра 1 0; i Параметры получены"},
    {[](Driver d) { d.setTail({}); }, "",
        "i Программирование строк рекламного текста; i Программирование параметров; "
        "i Программирование параметров выполнено; i Программирование завершено"},
    {[](Driver d) { EXPECT_FALSE(d.setTail(header)); }, "A2 21|0|ООО|",
        "i Программирование строк рекламного текста; i Программирование параметров; "
        "d Установка параметра [21,0] = ООО; e Отказ; i Программирование завершено",
        "A2=refused"},
    {[](Driver d) { d.setGraphicCliche(QStringLiteral("none.png")); }, "",
        "i Программирование графического клише; e Не удалось загрузить изображение"},
    {[](Driver d) { d.clearGraphicCliche(); }, "E3",
        "i Очистка графического клише; d Очистка логотипа; done"},
};

// These do not look at the port.
const std::vector<Operation> goingOn{
    {[](Driver d) { EXPECT_EQ(d.checkMarkingCode(measured, false), 15); }, "3D 0|2|0.25|11|||4142ef|0|||",
        "i Проверка кода маркировки; d Проверка КМ в ФН", "3D=15"},
    {[](Driver d) { d.checkMarkingCode(piece, true); },
        "3D 0|3|1|0|||3031303436303034333939333132353632313551626167211d39335a6a7177|0|||",
        "i Проверка кода маркировки; d Проверка КМ в ФН"},
    {[](Driver d) { d.clearMarkingCodes(); }, "3F",
        "i Очистка результатов проверки КМ в ФН; d Очистка результатов проверки КМ в ФН; w Нет связи с ФР",
        "3F=no connection"},
    {[](Driver d) { d.registration(systems, {}, "x", {}, {}); },
        "C0; 08 |f4|f3|f0|{Анна Ким}||f5|f6|33|f11|f10|f7|f8|f1|f12|128|||",
        "i Регистрация/перерегистрация; d Регистрация/перерегистрация ККТ; "
        "d Получение всех данных регистрации/перерегистрации; done"},
    {[](Driver d) { EXPECT_EQ(d.getDefaultPaymentType(), 0); }, "", ""},
    {[](Driver d) { d.setFont({EFrDriver::InvertedFont}); }, "", ""},
    {[](Driver d) { d.resetFont(); }, "", ""},
};

} // namespace

TEST_F(HexDriverTest, eachOperationSendsItsFramesAndTellsWhatItDoes)
{
    const auto usual = device.answers;
    for (const std::vector<Operation>* table : {&askingForThePort, &goingOn}) {
        for (const Operation& row : *table) {
            device.answer(QString::fromUtf8(row.answers));
            driver.portState = table == &goingOn ? 1 : 0;
            logged();
            driver.sent();
            row.call(driver);
            const std::string log = logged();
            const std::string sent = driver.sent();
            EXPECT_TRUE(*row.sent == '\0' || sent == wire(row.sent)) << row.sent << ", sent " << sent;
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
    for (const Operation& row : askingForThePort) {
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
