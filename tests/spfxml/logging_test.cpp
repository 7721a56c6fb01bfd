// What service engineers read: each operation's lines with their levels, in order; and the port that is
// closed.

#include "scriptedfrspf.h"

#include <barcode.h>
#include <frparameter.h>
#include <frpayment.h>
#include <frposition.h>
#include <markedposition.h>

#include <functional>

namespace {

using namespace hw::fr;

class LoggingFrSpf : public ScriptedFrSpf
{
protected:
    using Call = std::function<void(spfxml::FrSpf&)>;
    using D = spfxml::FrSpf&;

    struct Row
    {
        Call call;
        std::string lines;
        const char* shift = "ShiftState=1";
        const char* exception = "";
        int failing = 0;
        const char* closedPort = "FrNoConnectionException: ";
    };

    // A failure is logged where the row says so, and passes on.
    static constexpr const char* refused = "FrWaitForPaperException: Отказ";
    // The registers raise a copy that no longer says that it was the connection: it is meant.
    static constexpr const char* copied = "FrCommandException: ";
    static constexpr const char* notOpen = "Необходимо открыть порт";
    static constexpr const char* closed = "ShiftState=0";
    static constexpr const char* open = "ShiftState=1";

    void run(const Row& row, Driver& tested)
    {
        script->answers[44] = row.shift;
        script->answers[76] = "<a><pa n='2106'>15</pa></a>";
        script->failing = row.failing;
        const MessageLog log;
        EXPECT_EQ(thrown([&] { row.call(tested); }), row.exception) << row.lines;
        const std::string lines = takenLines();
        EXPECT_TRUE(matches(lines, row.lines)) << "expected " << row.lines << "\n     got " << lines;
    }

    const QDateTime noon{QDate(2026, 3, 1), QTime(12, 0)};
    const FrPosition tea{QStringLiteral("Чай"), 10.0, 1.0};
    const Barcode qrCode{"12", Barcode::Qr};
    const Barcode code128{"12", Barcode::Code128};
    const MarkedPosition code{1, QStringLiteral("A"), 1.0, 0};

    FrPosition markedTea() const
    {
        FrPosition position = tea;
        position.setMarkingCode(QStringLiteral("0104600439931256215Qbag!93Zjqw"), MarkTobacco);
        return position;
    }

    static inline const std::string shiftIsOpen
        = "i Открытие смены; d Запрос параметров смены; i Смена в ФР открыта";
    static inline const std::string status = "d Информация о ККТ; d Запрос состояния; ";
    static inline const std::string identity = status + "i Текущий статус:\nСтатус ФР\n…; i …; ";
    static inline const std::string saleCounters
        = "i Получение счетчиков чека продажи (реквизит 1129); d Запрос параметров смены; d Счётчики ККТ";
    static inline const std::string cashIn = "i Запрос счетчиков чека: внесение; d Запрос параметров смены; "
                                             "d Счётчики ККТ; d операций - 0, сумма - 0.00";
    static inline const std::string cashOut = "i Запрос счетчиков чека: выем; d Запрос параметров смены; "
                                              "d Счётчики ККТ; d операций - 0, сумма - 0.00";
    static inline const std::string fnInfo
        = "i Получение данных о состоянии фискального накопителя; " + status + "done";

    // These ask for an open port before they send anything.
    const std::vector<Row> askingForThePort{
        {[](D d) { d.isCashDrawerOpened(); },
            "i Проверка статуса денежного ящика; d Состояние денежного ящика"},
        {[](D d) { d.isCashDrawerOpened(); },
            "i Проверка статуса денежного ящика; d Состояние денежного ящика; e Отказ", open, refused, 52},
        {[](D d) { d.drawerOpen(); }, "i Открытие денежного ящика; d Открытие денежного ящика; done"},
        {[](D d) { d.drawerOpen(); }, "i Открытие денежного ящика; d Открытие денежного ящика; e Отказ", open,
            refused, 36},
        {[](D d) { d.getDateTime(); },
            "i Получение даты/времени из ККМ; d Чтение времени; i Дата/время ККМ: некорректное время"},
        {[](D d) { d.getDateTime(); }, "i Получение даты/времени из ККМ; d Чтение времени", open, refused,
            22},
        {[this](D d) { d.setDateTime(noon); },
            "i Установка даты/времени в ККМ: 01.03.2026 12:00:00; d Запрос параметров смены; "
            "d Установка времени; done",
            closed},
        {[this](D d) { d.setDateTime(noon); },
            "i Установка даты/времени в ККМ: 01.03.2026 12:00:00; d Запрос параметров смены; e Отказ", open,
            refused, 44},
        {[this](D d) { EXPECT_FALSE(d.setDateTime(noon)); },
            "i Установка даты/времени в ККМ: 01.03.2026 12:00:00; d Запрос параметров смены; "
            "i Невозможно выполнить синхронизацию времени, смена в ФР открыта"},
        {[](D d) { d.openShift(); }, shiftIsOpen},
        {[](D d) { d.openShift(); }, "i Открытие смены; d Запрос параметров смены", open, refused, 44},
        {[](D d) { d.openShift(); }, "i Открытие смены; d Запрос параметров смены; d Открытие смены", closed},
        {[](D d) { d.xReport(); }, "i Снятие суточного отчета без гашения; d Печать итогов смены; done"},
        {[](D d) { d.xReport(); }, "i Снятие суточного отчета без гашения; d Печать итогов смены", open,
            refused, 46},
        {[](D d) { d.zReport(); },
            "i Снятие суточного отчета с гашением; d Запрос параметров смены; d Закрытие смены; done"},
        {[](D d) { d.zReport(); }, "i Снятие суточного отчета с гашением; d Запрос параметров смены", open,
            refused, 44},
        {[](D d) { d.zReport(); },
            "i Снятие суточного отчета с гашением; d Запрос параметров смены; i Смена в ФР закрыта", closed},
        {[](D d) { d.init(); }, "i Инициализация ККМ; d Информация о ККТ", open, refused, 58},
        {[](D d) { d.setConnection(); }, "i Соединение с устройством; " + status.substr(0, status.size() - 2),
            open, refused, 2},
        {[](D d) { d.init(); },
            "i Инициализация ККМ; " + identity
                + "d Чтение рекламного текста из настроек; i Инициализация выполнена"},
        {[](D d) { d.init(); },
            "i Инициализация ККМ; d Чтение рекламного текста из настроек; i Инициализация выполнена"},
        {[](D d) { d.setConnection(); },
            "i Соединение с устройством; " + identity + "i Соединение установлено"},
        {[](D d) { d.getDeviceStateDescription(); },
            "i Получение описания состояния устройства; i Получение даты/времени из ККМ; d Чтение времени; "
            "i Дата/время ККМ: некорректное время; "
                + status + "i Описание состояния получено"},
        {[](D d) { d.checkClose({}); },
            "i Закрытие чека продажа; d Получение налоговой системы; d Закрытие чека; i Чек закрыт"},
        {[](D d) { d.checkClose({}); },
            "i Закрытие чека продажа; d Получение налоговой системы; d Закрытие чека; e Отказ", open, refused,
            8},
        {[this](D d) {
             d.checkAddPosition(markedTea());
             d.checkClose({});
         },
            "i Добавление позиции в чек: …; i Закрытие чека продажа; d Получение налоговой системы; "
            "d Закрытие чека; i Получение реквизита 'Код товара'; "
            "i Добавление реквизитов поставщика в позицию; "
            "i Добавление реквизитов платежного агента в позицию; i Чек закрыт"},
        {[](D d) { d.checkOpen(FiscalDocument(CheckSaleReturn)); },
            "i Открытие чека возврата продажи; " + shiftIsOpen},
        {[](D d) { d.moneyCheckClose(-0.001); },
            "i Закрытие чека неизвестный тип чека, сумма 0.00; d Внесение/изъятие"},
        {[](D d) { d.textDocClose(); }, "i Закрытие текстового документа; d Печать нефискального документа"},
        {[this](D d) { d.checkMarkingCode(code, true); },
            "i Проверка кода маркировки; " + shiftIsOpen
                + "; d Проверка кода маркировки; i Получение реквизита 'Код товара'; "
                  "i Обработка результата проверки кода маркировки"},
        {[this](D d) { d.checkMarkingCode(code, false); },
            "i Проверка кода маркировки; "
            "i Маркировка была проверена ранее. Возвращается значение из кеша"},
        {[](D d) { d.registration({}, {}, {}, {}, {}); },
            "i Регистрация/перерегистрация ФР; d Запрос параметров смены; "
            "e Регистрация невозможна - смена открыта в ФР",
            open, "FrCommandException: Регистрация невозможна - смена открыта в ФР"},
        {[](D d) { d.registration({}, {}, {}, {}, {}); },
            "i Регистрация/перерегистрация ФР; d Запрос параметров смены", closed},
        {[](D d) { d.getFnInfo(); }, fnInfo},
        {[](D d) { d.getFnInfo(); },
            "i Получение данных о состоянии фискального накопителя; d Информация о ККТ; e Отказ", open,
            refused, 58},
        {[](D d) { d.getFnStateDescription(); },
            "i Получение описания состояния ФН устройства; " + fnInfo + "; d Описание состояния ФН получено"},
        {[](D d) { d.setDefaults(); },
            "i Программирование настроек ФР по умолчанию; d Установка параметров ККТ; "
            "i Установлены настройки по умолчанию"},
        {[](D d) { d.getParametersDescription(); },
            "i Получение описания параметров; d Чтение параметров ККТ; i Описание параметров получено"},
        {[](D d) { d.readParameters({}); },
            "i Получение параметров; d Чтение параметров ККТ; i Параметры получены"},
        {[](D d) { d.getCheckCounters(CheckSale); }, saleCounters},
        {[](D d) { d.getCheckCounters(CheckSaleReturn); },
            "i Получение счетчиков чека возврата продажи (реквизит 1130); d Запрос параметров смены; "
            "e Смена закрыта",
            closed},
        {[](D d) { d.getMoneyCounters(CheckCashIn); }, cashIn},
        {[](D d) { d.getMoneyCounters(CheckCashOut); },
            "i Запрос счетчиков чека: выем; d Запрос параметров смены; e Смена закрыта", closed},
        {[](D d) { d.getCountersDescription(); },
            "i Получение описания счетчиков; " + saleCounters
                + "; i Получение счетчиков чека возврата продажи (реквизит 1130); "
                  "d Запрос параметров смены; d Счётчики ККТ; i Описание счетчиков получено"},
        {[](D d) { d.getCountersDescription(); },
            "i Получение описания счетчиков; " + saleCounters + "; e Отказ", open, refused, 40},
        {[](D d) { d.getKkmRegisterBeg(); },
            "i Получение счетчиков ККМ на начало смены; d Счётчики ККТ; d Сумма из денежного ящика; "
            "d Запрос параметров смены; d Информация о ККТ; d Запрос состояния; done",
            open, "", 0, copied},
        {[](D d) { d.getKkmRegisterEnd(); },
            "i Получение счетчиков ККМ на конец смены; d Счётчики ККТ; d Счётчики ККТ; " + cashIn + "; "
                + cashOut + "; d Сумма из денежного ящика",
            open, "", 0, copied},
        {[](D d) { d.getKkmRegisterEnd(); },
            "i Получение счетчиков ККМ на конец смены; d Счётчики ККТ; e Отказ", open,
            "FrCommandException: Отказ", 40, copied},
    };

    // These do not look at the port: the exchange does, or there is none.
    const std::vector<Row> goingOn{
        {[](D d) { d.printFnDocument(7); }, "i Печать ФД №7"},
        {[](D d) { d.printLastFnDocument(); }, "i Запрос и печать копии последнего ФД"},
        {[](D d) { d.accountingReport(); },
            "i Снятие отчета о текущем состоянии расчетов; d Запрос параметров смены; "
            "i Снятие отчета о текущем состоянии расчетов"},
        {[](D d) { d.accountingReport(); },
            "i Снятие отчета о текущем состоянии расчетов; d Запрос параметров смены", closed,
            "FrCommandException: Необходимо закрыть смену в ФР"},
        {[this](D d) { d.checkAddPosition(tea); }, "i Добавление позиции в чек: …"},
        {[](D d) { d.checkPay(FrPayment(1, 2.5)); }, "i Расчет по чеку: тип 1, сумма 2.50"},
        {[](D d) { d.moneyCheckOpen(CheckCashIn, {}); }, "i Открытие чека: внесение"},
        {[](D d) { d.moneyCheckPrint({}); }, "d Добавление строк текста для печати"},
        {[](D d) { d.textDocOpen(CheckNonFiscal); }, "i Открытие текстового документа"},
        {[this](D d) { d.barcodePrint(qrCode); }, "i Добавление штрих-кода для печати: 12"},
        {[this](D d) { d.barcodePrint(code128); },
            "i Добавление штрих-кода для печати: 12; e Тип штрих-кода CODE 128 не поддерживается ФР"},
        {[](D d) { d.setFont({EFrDriver::SmallFont}); }, ""},
        {[](D d) { d.resetFont(); }, ""},
        {[](D d) { d.clearMarkingCodes(); }, ""},
        {[](D d) { d.getFfdVersion(); }, "i Получение версии ФФД"},
        {[](D d) { d.getAllTaxSystems(); },
            "i Получение применяемой системы налогообложения; d Получение налоговой системы"},
        {[](D d) { d.getDefaultTaxSystem(); }, "d Получение налоговой системы"},
        {[](D d) { d.setRequisite(FdRequisite(EFrDriver::TaxSystem, 2)); },
            "i Запись реквизита 1055 (…) в ФР; d Установка системы налогообложения для чека: …"},
        {[](D d) { d.setRequisite(FdRequisite(EFrDriver::CashierName, "a")); },
            "i Запись реквизита 1021 (…) в ФР; w Тип реквизита не поддерживается"},
        {[](D d) { d.checkPrint({}); }, "d Добавление строк текста для печати"},
        {[](D d) { d.setCliche({"a"}); }, "d Установка параметров ККТ"},
        {[](D d) { d.setCliche({"a"}); }, "d Установка параметров ККТ; e Отказ", open, refused, 56},
        {[](D d) { EXPECT_FALSE(d.setTail({})); },
            "i Программирование рекламного текста не поддерживается устройством"},
        {[](D d) { EXPECT_TRUE(d.setParams({})); },
            "i Программирование параметров; d Установка параметров ККТ; i Программирование параметров выполнено"},
        {[](D d) { EXPECT_FALSE(d.setParams({FrParameter(0, 0, 0, QStringLiteral("a.b"))})); },
            "i Программирование параметров; e Некорректное значение параметра 'a.b'"},
        {[](D d) { EXPECT_FALSE(d.setParams({FrParameter(0, 0, 0, QStringLiteral("OFD.OFD.OFD_Host.x"))})); },
            "i Программирование параметров; d Установка параметров ККТ; e Отказ", open, "", 56},
        {[](D d) { EXPECT_FALSE(d.setGraphicCliche(QStringLiteral("none.png"))); },
            "i Программирование графического клише; e Не удалось загрузить изображение"},
    };
};

TEST_F(LoggingFrSpf, eachOperationTellsWhatItDoes)
{
    for (const Row& row : askingForThePort)
        run(row, driver);
}

TEST_F(LoggingFrSpf, aClosedPortIsRefusedBeforeAByteIsSentWhereItIsLookedAt)
{
    driver.portClose();
    Driver withoutPort(nullptr, &settings);
    withoutPort.command = script;
    const std::string noPort = "Ошибка инициализации драйвера порта";
    for (const Row& row : askingForThePort) {
        script->answers[44] = row.shift;
        const MessageLog log;
        EXPECT_EQ(thrown([&] { row.call(driver); }), row.closedPort + std::string(notOpen)) << row.lines;
        EXPECT_EQ(thrown([&] { row.call(withoutPort); }), row.closedPort + noPort) << row.lines;
        EXPECT_THAT(script->taken(), testing::IsEmpty()) << row.lines;
        EXPECT_EQ(takenLines().find("done"), std::string::npos) << row.lines;
    }
    for (const Row& row : goingOn) {
        run(row, driver);
        run(row, withoutPort);
    }
}

} // namespace
