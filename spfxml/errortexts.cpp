#include "errortexts.h"

namespace spf::utils {

const QMap<int, QString>& errorCategoryTexts()
{
    static const QMap<int, QString> texts{
        {1, QStringLiteral("Внутренняя ошибка")},
        {2, QStringLiteral("Ошибка ФН")},
        {3, QStringLiteral("Ошибка печатающего устройства")},
        {4, QStringLiteral("Ошибка ОФД")},
        {5, QStringLiteral("Ошибка POS терминала")},
    };
    return texts;
}

const QMap<int, QString>& printerErrorTexts()
{
    static const QMap<int, QString> texts{
        {1, QStringLiteral("Функция невыполнима при данном статусе ККМ")},
        {8, QStringLiteral("Конец бумаги")},
    };
    return texts;
}

const QMap<int, QString>& errorTexts()
{
    // Reported both as a code of its own and among the errors of the OFD; one text is meant.
    static const QString shiftTooLong = QStringLiteral("Продолжительность смены превышает 24 часа");
    static const QMap<int, QString> texts{
        {22, shiftTooLong},
        {1001, QStringLiteral("Некорректный документ")},
        {1002, QStringLiteral("Получена непредвиденная команда")},
        {1003, QStringLiteral("Сумма оплат не соответствует итоговой сумме чека")},
        {1004, QStringLiteral("Некорректное значение параметров команды/документа")},
        {1005, QStringLiteral("Отсутствует документ для повторной печати")},
        {1006, QStringLiteral("Некорректно задана система налогообложения для чека")},
        {1007, QStringLiteral("Недостаточно средств в денежном ящике")},
        {1008, QStringLiteral("Для работы необходим RTC")},
        {2001, QStringLiteral("Некорректное значение параметров ФН")},
        {2002, QStringLiteral("Некорректное значение параметров архива ФН")},
        {2003, QStringLiteral("Ошибка открытия COM-порта для подключения ФН")},
        {2004, QStringLiteral("Ошибка загрузки номера ФН")},
        {2005, QStringLiteral("Некорректное состояние ФН")},
        {3001, QStringLiteral("Некорректное значение параметров принтера")},
        {3002, QStringLiteral("Ошибка инициализации принтера")},
        {3003, QStringLiteral("Принтер не был проинициализирован")},
        {4001, QStringLiteral("Отсутствуют параметры для обмена с ОФД")},
        {4002,
            QStringLiteral(
                "Неверные дата и/или время (Дата и время операции не соответствуют логике работы ФН)")},
        {4003, shiftTooLong},
        {4004,
            QStringLiteral(
                "Исчерпан ресурс ожидания передачи сообщения в ОФД (время нахождения в очереди самого старого сообщения на передачу более 30 календарны дней)")},
        {5001, QStringLiteral("Неподдерживаемая версия протокола")},
        {5002, QStringLiteral("Ошибка формата запроса")},
        {5003, QStringLiteral("Ошибка формата данных")},
        {5004, QStringLiteral("Ошибка загрузки ПО")},
        {5005, QStringLiteral("Ошибка контрольной суммы при получении файла")},
        {5006, QStringLiteral("Ошибка при сохранении полученного файла")},
        {5007, QStringLiteral("Ошибка при чтении файла для отправки")},
        {5008, QStringLiteral("Ошибка выгрузки ПО")},
        {5009, QStringLiteral("На текущий момент команда не поддерживается")},
    };
    return texts;
}

} // namespace spf::utils
