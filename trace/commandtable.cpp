#include "trace/commandtable.h"

#include <QStringList>

#include <algorithm>

namespace trace::commandtable {

namespace {

/// The fields by name, with commas between them. Signs before a name: ~ UTF-8, ! to be masked, @ time.
struct HexRow
{
    const char* code;
    /// First field of the request that the row is for; null for any.
    const char* question;
    const char* name;
    const char* request;
    const char* answer;
    bool isQuestion = false;
};

// clang-format off
constexpr HexRow hexRows[] = {
    {"00", nullptr, "Initialize", "@date,@time", ""},
    {"08", nullptr, "Registration", ",,,,!cashier,,,,taxSystems", ""},
    {"20", nullptr, "OpenDocument", "kind,,!cashier,!cashierInn,,taxSystem,!customer,electronic", ""},
    {"21", nullptr, "PrintText", "!text,attribute", ""},
    {"22", nullptr, "FinishDocument", "", ""},
    {"23", nullptr, "CancelDocument", "", ""},
    {"24", nullptr, "PrintBarcode", "textPosition,moduleWidth,height,kind,!text", ""},
    {"29", nullptr, "PrintQrCode", "size,,!text", ""},
    {"30", nullptr, "AddPaymentObject",
        "name,~barcode,quantity,price,,tax,,method,,,~country,~declaration,object,unit,,markStatus,"
        "~industryId,industryDate,~industryNumber,!~industryValue", ""},
    {"34", nullptr, "Subtotal", "", ""},
    {"35", nullptr, "Payment", "kind,sum", ""},
    {"36", nullptr, "SumInOut", ",sum", ""},
    {"3C", nullptr, "BindAgentData",
        "agent,!~operation,!~agentPhone,!~operatorName,!~operatorAddress,!~operatorPhone,!~operatorInn,"
        "!~receiverPhone,!~supplierPhone,!~supplierName,!~supplierInn", ""},
    {"3D", nullptr, "CheckMarkingCode", ",plannedStatus,quantity,unit,,,code", "result"},
    {"3F", nullptr, "ClearMarkingCodes", "", ""},
    {"41", nullptr, "BindMarkingCode", "~code", ""},
    {"60", nullptr, "PrintShiftCurrentTotals", "!cashier", ""},
    {"61", nullptr, "PrintShiftCloseReport", "!cashier,!cashierInn", ""},
    {"65", nullptr, "PrintFnDocument", "document", ""},
    {"6A", nullptr, "AccountingReport", "!cashier", ""},
    {"6B", nullptr, "OpenShift", "!~cashier,!cashierInn", ""},
    {"80", nullptr, "OpenDrawer", "", ""},
    {"A0", nullptr, "RequestStateStatus", "", "fatal,flags,document", true},
    {"A1", "31", "GetParameter", "number,row", "!value", true},
    {"A1", nullptr, "GetParameter", "number,row", "value", true},
    {"A2", "31", "SetParameter", "number,row,!value", ""},
    {"A2", nullptr, "SetParameter", "number,row,~value", ""},
    {"A3", nullptr, "SetDateTime", "@date,@time", ""},
    {"A4", "1", "GetFnData", "question", "lastDocument", true},
    {"A4", "2", "GetFnData", "question", "@lastDate,@lastTime", true},
    {"A4", "3", "GetFnData", "question", "drive", true},
    {"A4", "5", "GetFnData", "question", "expiry", true},
    {"A4", "6", "GetFnData", "question", "registrationsLeft", true},
    {"A4", "7", "GetFnData", "question", "registrationsDone", true},
    {"A4", "8", "GetFnData", "question", "ofdConnected", true},
    {"A4", "10", "GetFnData", "question", "firstUnsent", true},
    {"A4", "11", "GetFnData", "question", "@firstUnsentDate,@firstUnsentTime", true},
    {"A4", "12", "GetFnData", "question", "formatVersion", true},
    {"A4", "14", "GetFnData", "question", ",,,,,,notifications", true},
    {"A4", "15", "GetFnData", "question", "version,isSerial", true},
    {"A4", "", "GetFnData", "", "phase,document,hasData,shiftOpen,warnings", true},
    {"A4", nullptr, "GetFnData", "question", "", true},
    {"A5", "0", "GetKktData", "question,part", "modelOrRelease", true},
    {"A5", "1", "GetKktData", "question", "shift", true},
    {"A5", "3", "GetKktData", "question", "saleCash,saleElectronic,salePrepaid,saleCredit,saleOther", true},
    {"A5", "4", "GetKktData", "question", "returnCash,returnElectronic,returnPrepaid,returnCredit,returnOther", true},
    {"A5", "5", "GetKktData", "question", "cashInDrawer", true},
    {"A5", "7", "GetKktData", "question", "nextReceipt", true},
    {"A5", "9", "GetKktData", "question", "userInn", true},
    {"A5", "10", "GetKktData", "question", "registrationNumber", true},
    {"A5", "13", "GetKktData", "question", "sales,returns,,,,,,,,,,cashIn,cashOut", true},
    {"A5", "14", "GetKktData", "question", "saleSum,returnSum,,,,,,,,cashInSum,cashOutSum", true},
    {"A5", nullptr, "GetKktData", "question", "", true},
    {"A6", nullptr, "GetSerialNumber", "", "serialNumber", true},
    {"A7", nullptr, "GetDateTime", "", "@date,@time", true},
    {"A8", nullptr, "GetDrawerState", "", "open", true},
    {"C0", "10", "GetRegistrationData", "question", "taxSystems", true},
    {"C0", nullptr, "GetRegistrationData", "", "", true},
    {"E2", nullptr, "SetLogo", "size", ""},
    {"E3", nullptr, "ClearLogo", "", ""},
};

struct XmlRow
{
    int number;
    const char* name;
    bool isQuestion = false;
};

constexpr XmlRow xmlRows[] = {
    {2, "GetState", true},
    {4, "OpenShift"},
    {6, "CloseShift"},
    {8, "CloseReceipt"},
    {12, "AccountingReport"},
    {16, "PrintFnDocument"},
    {18, "Registration"},
    {22, "GetDateTime", true},
    {24, "SetDateTime"},
    {28, "PrintLastFnDocument"},
    {30, "NonFiscalDocument"},
    {36, "OpenDrawer"},
    {38, "MoneyOperation"},
    {40, "GetCounters", true},
    {44, "GetShiftStatus", true},
    {46, "PrintXReport"},
    {50, "GetTaxSystems", true},
    {52, "GetDrawerStatus", true},
    {54, "GetParameters", true},
    {56, "SetParameters"},
    {58, "GetDeviceInformation", true},
    {76, "CheckMarkingCode"},
    {90, "ClearMarkingCodes"},
};

struct ErrorRow
{
    int code;
    const char* text;
};

constexpr ErrorRow errorRows[] = {
    {1, "Функция невыполнима при данном статусе ККТ"},
    {2, "В команде указан неверный номер функции"},
    {3, "В команде указано неверное, больше чем максимально возможное или несоответствующее типу данных значение"},
    {4, "Переполнение буфера коммуникационного порта"},
    {5, "Таймаут при передаче байта информации"},
    {6, "В команде указан неверный пароль"},
    {7, "Ошибка контрольной суммы в команде"},
    {8, "Конец бумаги"},
    {9, "Принтер не готов"},
    {10, "Текущая смена больше 24 часов"},
    {11, "Разница во времени ККТ и указанной в команде инициализации больше 5 минут"},
    {12, "Вводимая дата более ранняя, чем дата последней фискальной операции"},
    {13, "Не был задан заголовок документа, что делает невозможным формирование фискального документа"},
    {14, "Отрицательный результат"},
    {15, "Ошибка дисплея покупателя"},
    {32, "Фатальная ошибка ККТ"},
    {33, "Превышено кол-во попыток коррекции MAC-адреса или заводского номера"},
    {36, "Зарезервировано"},
    {37, "Зарезервировано"},
    {38, "Зарезервировано"},
    {81, "Неверная команда ФН"},
    {82, "Неверное состояние ФН"},
    {83, "Ошибка ФН"},
    {84, "Ошибка криптографического сопроцессора в составе ФН"},
    {85, "Закончен срок эксплуатации ФН"},
    {86, "Архив ФН переполнен"},
    {87, "Неверные дата или время ФН"},
    {88, "Нет запрошенных данных в ФН"},
    {89, "Некорректное значение параметров команды ФН"},
    {90, "Некорректная команда (команда не разрешена в данном режиме функционирования). ФН в 1.1"},
    {91, "Неразрешенные реквизиты (реквизит должен формироваться на стороне ФН)"},
    {92, "Дублирование данных"},
    {93, "Отсутствуют данные"},
    {94, "Кол-во позиций в документе превысило допустимый предел"},
    {96, "Превышение размеров TLV данных"},
    {97, "Нет транспортного соединения с ОФД"},
    {98, "Исчерпан ресурс криптографического сопроцессора ФН"},
    {100, "Исчерпан ресурс хранения документов для ОФД"},
    {101, "Исчерпан ресурс ожидания передачи сообщения в ОФД"},
    {102, "Продолжительность смены в ФН превысила 24 часа"},
    {103, "Неверная разница во времени между двумя операциями"},
    {104, "Некорректный параметр, не соответствующий требованиям"},
    {105, "Реквизит не соответствует параметрам регистрации (продажа подакцизных товаров или СНО)"},
    {112, "Сообщение от ОФД не может быть принято"},
    {115, "Ошибка сервиса обновления ключей проверки КМ"},
    {116, "Неизвестный ответ сервиса обновления ключей проверки КМ"},
    {130, "Запрещена работа с маркированными товарами (не установлен признак работы с маркированными товарами)"},
    {131, "Неверная последовательность команд группы B (при проверке кода маркировки)"},
    {132, "Работа с маркированными товарами заблокирована"},
    {133, "Переполнена таблица хранения КМ"},
    {140, "В блоке TLV отсутствуют необходимые реквизиты"},
    {142, "В реквизите 2007 содержится КМ, который ранее не проверялся в ФН"},
    {160, "ФН не поддерживает указанный ФФД или команда недоступна в текущей версии ФФД"},
};
// clang-format on

FieldRow fieldOf(QString text)
{
    FieldRow row;
    for (; !text.isEmpty() && !text.at(0).isLetter(); text.remove(0, 1)) {
        row.isUtf8 = row.isUtf8 || text.at(0) == QLatin1Char('~');
        row.isPersonal = row.isPersonal || text.at(0) == QLatin1Char('!');
        row.isTime = row.isTime || text.at(0) == QLatin1Char('@');
    }
    row.name = text;
    return row;
}

QList<FieldRow> fieldsOf(const char* text)
{
    QList<FieldRow> rows;
    for (const QString& name : QString::fromLatin1(text).split(QLatin1Char(',')))
        rows.append(fieldOf(name));
    return rows;
}

QList<HexCommandRow> makeHexCommands()
{
    QList<HexCommandRow> commands;
    for (const HexRow& row : hexRows)
        commands.append({row.code,
            row.question == nullptr ? std::nullopt : std::optional<QByteArray>(row.question),
            {QString::fromLatin1(row.name), row.isQuestion, fieldsOf(row.request), fieldsOf(row.answer)}});
    return commands;
}

QMap<int, CommandRow> makeXmlCommands()
{
    QMap<int, CommandRow> commands;
    for (const XmlRow& row : xmlRows)
        commands.insert(row.number, {QString::fromLatin1(row.name), row.isQuestion, {}, {}});
    return commands;
}

QMap<int, QString> makeHexErrors()
{
    QMap<int, QString> errors;
    for (const ErrorRow& row : errorRows)
        errors.insert(row.code, QString::fromUtf8(row.text));
    return errors;
}

} // namespace

const QList<HexCommandRow>& hexCommands()
{
    static const QList<HexCommandRow> commands = makeHexCommands();
    return commands;
}

const QMap<int, CommandRow>& xmlCommands()
{
    static const QMap<int, CommandRow> commands = makeXmlCommands();
    return commands;
}

const QMap<int, QString>& hexErrors()
{
    static const QMap<int, QString> errors = makeHexErrors();
    return errors;
}

const CommandRow* hexCommand(const QByteArray& code, const QByteArray& firstField)
{
    const QList<HexCommandRow>& rows = hexCommands();
    const auto found
        = std::find_if(rows.cbegin(), rows.cend(), [&code, &firstField](const HexCommandRow& row) {
              return code == row.code && (!row.question || firstField == *row.question);
          });
    return found == rows.cend() ? nullptr : &found->command;
}

QList<FieldRow> hexFields(const CommandRow* command, Direction direction, qsizetype count)
{
    QList<FieldRow> rows;
    if (command != nullptr)
        rows = direction == Direction::ToRegister ? command->requestFields : command->answerFields;
    // Nobody knows what fields of an unknown command tell of.
    FieldRow other;
    other.isPersonal = command == nullptr;
    rows.resize(count, other);
    return rows;
}

const CommandRow* xmlCommand(int number)
{
    const auto found = xmlCommands().constFind(number);
    return found == xmlCommands().cend() ? nullptr : &*found;
}

QString hexErrorText(int code)
{
    return hexErrors().value(code);
}

} // namespace trace::commandtable
