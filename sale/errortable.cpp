#include "errortable.h"

#include <tr.h>

#include <algorithm>
#include <iterator>

namespace sale {

namespace {

struct ErrorRow
{
    int code;
    const char* text;
    ErrorKind kind;
};

// What a register answers when its state forbids the command.
constexpr const char* impossibleNow = "Функция невыполнима при данном статусе ККТ";
constexpr ErrorRow unexpectedCommand[] = {{1002, "Получена непредвиденная команда", ErrorKind::Other}};

// Answer codes over HEX.
constexpr ErrorRow hexErrors[] = {
    {1, impossibleNow, ErrorKind::Other},
    {2, "В команде указан неверный номер функции", ErrorKind::Internal},
    {3, "В команде указано неверное, больше чем максимально возможное или несоответствующее типу данных значение",
        ErrorKind::Data},
    {4, "Переполнение буфера коммуникационного порта", ErrorKind::Line},
    {5, "Таймаут при передаче байта информации", ErrorKind::Line},
    {6, "В команде указан неверный пароль", ErrorKind::Internal},
    {7, "Ошибка контрольной суммы в команде", ErrorKind::Line},
    {8, "Конец бумаги", ErrorKind::Paper},
    {9, "Принтер не готов", ErrorKind::Cover},
    {10, "Текущая смена больше 24 часов", ErrorKind::ShiftExpired},
    {11, "Разница во времени ККТ и указанной в команде инициализации больше 5 минут", ErrorKind::Clock},
    {12, "Вводимая дата более ранняя, чем дата последней фискальной операции", ErrorKind::Clock},
    {13, "Не был задан заголовок документа, что делает невозможным формирование фискального документа",
        ErrorKind::Internal},
    {14, "Отрицательный результат", ErrorKind::Cash},
    {15, "Ошибка дисплея покупателя", ErrorKind::Other},
    {32, "Фатальная ошибка ККТ", ErrorKind::Fatal},
    {33, "Превышено кол-во попыток коррекции MAC-адреса или заводского номера", ErrorKind::Fatal},
    {36, "Зарезервировано", ErrorKind::Fatal},
    {81, "Неверная команда ФН", ErrorKind::Internal},
    {82, "Неверное состояние ФН", ErrorKind::Other},
    {83, "Ошибка ФН", ErrorKind::Fatal},
    {84, "Ошибка криптографического сопроцессора в составе ФН", ErrorKind::Fatal},
    {85, "Закончен срок эксплуатации ФН", ErrorKind::DriveExpired},
    {86, "Архив ФН переполнен", ErrorKind::DriveFull},
    {87, "Неверные дата или время ФН", ErrorKind::Clock},
    {88, "Нет запрошенных данных в ФН", ErrorKind::Data},
    {89, "Некорректное значение параметров команды ФН", ErrorKind::Data},
    {90, "Некорректная команда (команда не разрешена в данном режиме функционирования). ФН в 1.1",
        ErrorKind::Internal},
    {91, "Неразрешенные реквизиты (реквизит должен формироваться на стороне ФН)", ErrorKind::Data},
    {92, "Дублирование данных", ErrorKind::Data},
    {93, "Отсутствуют данные", ErrorKind::Data},
    {94, "Кол-во позиций в документе превысило допустимый предел", ErrorKind::Data},
    {96, "Превышение размеров TLV данных", ErrorKind::Data},
    {97, "Нет транспортного соединения с ОФД", ErrorKind::OfdBlocked},
    {98, "Исчерпан ресурс криптографического сопроцессора ФН", ErrorKind::DriveExpired},
    // Both are gone once the drive's documents have reached the operator.
    {100, "Исчерпан ресурс хранения документов для ОФД", ErrorKind::OfdBlocked},
    {101, "Исчерпан ресурс ожидания передачи сообщения в ОФД", ErrorKind::OfdBlocked},
    {102, "Продолжительность смены в ФН превысила 24 часа", ErrorKind::ShiftExpired},
    {103, "Неверная разница во времени между двумя операциями", ErrorKind::Clock},
    {104, "Некорректный параметр, не соответствующий требованиям", ErrorKind::Data},
    {105, "Реквизит не соответствует параметрам регистрации (продажа подакцизных товаров или СНО)",
        ErrorKind::Data},
    {112, "Сообщение от ОФД не может быть принято", ErrorKind::OfdBlocked},
    {115, "Ошибка сервиса обновления ключей проверки КМ", ErrorKind::Mark},
    {116, "Неизвестный ответ сервиса обновления ключей проверки КМ", ErrorKind::Mark},
    {130,
        "Запрещена работа с маркированными товарами (не установлен признак работы с маркированными товарами)",
        ErrorKind::Mark},
    {131, "Неверная последовательность команд группы B (при проверке кода маркировки)", ErrorKind::Mark},
    {132, "Работа с маркированными товарами заблокирована", ErrorKind::Mark},
    {133, "Переполнена таблица хранения КМ", ErrorKind::Mark},
    {140, "В блоке TLV отсутствуют необходимые реквизиты", ErrorKind::Data},
    {142, "В реквизите 2007 содержится КМ, который ранее не проверялся в ФН", ErrorKind::Mark},
    {160, "ФН не поддерживает указанный ФФД или команда недоступна в текущей версии ФФД",
        ErrorKind::Internal},
};

// Codes over XML, whose texts a host may have translated.
constexpr ErrorRow xmlErrors[] = {
    {22, "Продолжительность смены превышает 24 часа", ErrorKind::ShiftExpired},
    {1001, "Некорректный документ", ErrorKind::Data},
    unexpectedCommand[0],
    {1003, "Сумма оплат не соответствует итоговой сумме чека", ErrorKind::Data},
    {1004, "Некорректное значение параметров команды/документа", ErrorKind::Data},
    {1005, "Отсутствует документ для повторной печати", ErrorKind::Data},
    {1006, "Некорректно задана система налогообложения для чека", ErrorKind::Data},
    {1007, "Недостаточно средств в денежном ящике", ErrorKind::Cash},
    {1008, "Для работы необходим RTC", ErrorKind::Clock},
    {2001, "Некорректное значение параметров ФН", ErrorKind::Data},
    {2002, "Некорректное значение параметров архива ФН", ErrorKind::Data},
    {2003, "Ошибка открытия COM-порта для подключения ФН", ErrorKind::Fatal},
    {2004, "Ошибка загрузки номера ФН", ErrorKind::Fatal},
    {2005, "Некорректное состояние ФН", ErrorKind::Other},
    {3001, "Некорректное значение параметров принтера", ErrorKind::Data},
    {3002, "Ошибка инициализации принтера", ErrorKind::Cover},
    {3003, "Принтер не был проинициализирован", ErrorKind::Cover},
    {4001, "Отсутствуют параметры для обмена с ОФД", ErrorKind::OfdBlocked},
    {4002, "Неверные дата и/или время (Дата и время операции не соответствуют логике работы ФН)",
        ErrorKind::Clock},
    {4003, "Продолжительность смены превышает 24 часа", ErrorKind::ShiftExpired},
    {4004,
        "Исчерпан ресурс ожидания передачи сообщения в ОФД (время нахождения в очереди самого старого сообщения на передачу более 30 календарны дней)",
        ErrorKind::OfdBlocked},
    {5001, "Неподдерживаемая версия протокола", ErrorKind::Internal},
    {5002, "Ошибка формата запроса", ErrorKind::Internal},
    {5003, "Ошибка формата данных", ErrorKind::Internal},
    {5004, "Ошибка загрузки ПО", ErrorKind::Internal},
    {5005, "Ошибка контрольной суммы при получении файла", ErrorKind::Internal},
    {5006, "Ошибка при сохранении полученного файла", ErrorKind::Internal},
    {5007, "Ошибка при чтении файла для отправки", ErrorKind::Internal},
    {5008, "Ошибка выгрузки ПО", ErrorKind::Internal},
    {5009, "На текущий момент команда не поддерживается", ErrorKind::Internal},
};

constexpr ErrorRow printerErrors[] = {
    {1, "Функция невыполнима при данном статусе ККМ", ErrorKind::Other},
    {8, "Конец бумаги", ErrorKind::Paper},
};

constexpr ErrorRow categories[] = {
    {1, "Внутренняя ошибка", ErrorKind::Other},
    {2, "Ошибка ФН", ErrorKind::Other},
    {3, "Ошибка печатающего устройства", ErrorKind::Cover},
    {4, "Ошибка ОФД", ErrorKind::OfdBlocked},
    {5, "Ошибка POS терминала", ErrorKind::Other},
};

// Refusals of the drivers and of this library.
constexpr ErrorRow ownErrors[] = {
    {0, "Нет связи с ФР", ErrorKind::Line},
    {0, "Ошибка обмена данными", ErrorKind::Line},
    {0, "Некорректный ответ от ФР", ErrorKind::Line},
    {0, "Ошибка команды ККМ", ErrorKind::Line},
    {0, "Не удалось узнать номер последнего документа ФН", ErrorKind::Line},
    {0, "Тип чека не поддерживается ФР", ErrorKind::Data},
    {0, "Тип оплаты не поддерживается ФР", ErrorKind::Data},
    // The XML driver says so of a closed shift: it must be opened for the report.
    {0, "Необходимо закрыть смену в ФР", ErrorKind::ShiftClosed},
    {0, "Не указан кассир", ErrorKind::Data},
    {0, "В ФН нет документов", ErrorKind::Data},
    {0, "Не указана система налогообложения", ErrorKind::Data},
};

QString textOf(const ErrorRow& row, const char* key)
{
    const QString text = QString::fromUtf8(row.text);
    return key == nullptr ? text : tr::Tr(QString::fromLatin1(key).arg(row.code), text).ui();
}

template <size_t Size>
std::optional<ErrorKind> kindIn(const ErrorRow (&rows)[Size], const QString& text, const char* key = nullptr)
{
    const auto* const found = std::find_if(std::begin(rows), std::end(rows), [&](const ErrorRow& row) {
        return text == QString::fromUtf8(row.text) || (key != nullptr && text == textOf(row, key));
    });
    return found == std::end(rows) ? std::nullopt : std::optional(found->kind);
}

const QString separator = QStringLiteral(". ");

std::optional<std::pair<ErrorKind, QString>> splitCategory(const QString& text)
{
    for (const ErrorRow& row : categories) {
        for (const QString& category : {QString::fromUtf8(row.text), textOf(row, "spfErrorCategory%1")}) {
            if (text.startsWith(category + separator))
                return std::pair(row.kind, text.mid(category.size() + separator.size()));
        }
    }
    return std::nullopt;
}

std::optional<ErrorKind> kindOverXml(const QString& message)
{
    const std::optional<ErrorKind> kind = kindIn(xmlErrors, message, "spfErrorMessage%1");
    return kind ? kind : kindIn(printerErrors, message, "spfPrinterError%1");
}

} // namespace

std::optional<ErrorKind> errorKindOfText(const QString& text)
{
    if (const auto split = splitCategory(text))
        return kindOverXml(split->second);
    if (const std::optional<ErrorKind> kind = kindIn(hexErrors, text))
        return kind;
    if (const std::optional<ErrorKind> kind = kindOverXml(text))
        return kind;
    // What stands behind a colon is a detail.
    return kindIn(ownErrors, text.section(QLatin1Char(':'), 0, 0));
}

std::optional<ErrorKind> errorKindOfCategory(const QString& text)
{
    const auto split = splitCategory(text);
    return split ? std::optional(split->first) : std::nullopt;
}

bool isRefusalOfState(const QString& text)
{
    const auto split = splitCategory(text);
    return text == QString::fromUtf8(impossibleNow)
        || kindIn(unexpectedCommand, split ? split->second : text, "spfErrorMessage%1");
}

} // namespace sale
