#include "answercodes.h"

#include <algorithm>
#include <array>

namespace spfhex {

namespace {

// In the order of the protocol. What looks uneven is meant: the fiscal drive's own complaint about a long
// shift (102) is a plain refusal, only the register's (10) is not; 34 and 35 are unknown between fatal
// neighbours; the text of 90 ends as it does.
constexpr std::array answerCodes{
    AnswerCode{1, u"Функция невыполнима при данном статусе ККТ", AnswerCode::Command},
    AnswerCode{2, u"В команде указан неверный номер функции", AnswerCode::Command},
    AnswerCode{3,
        u"В команде указано неверное, больше чем максимально возможное или несоответствующее типу данных значение",
        AnswerCode::Command},
    AnswerCode{4, u"Переполнение буфера коммуникационного порта", AnswerCode::Command},
    AnswerCode{5, u"Таймаут при передаче байта информации", AnswerCode::Command},
    AnswerCode{6, u"В команде указан неверный пароль", AnswerCode::Command},
    AnswerCode{7, u"Ошибка контрольной суммы в команде", AnswerCode::Command},
    AnswerCode{8, u"Конец бумаги", AnswerCode::Paper},
    AnswerCode{9, u"Принтер не готов", AnswerCode::Paper},
    AnswerCode{10, u"Текущая смена больше 24 часов", AnswerCode::ShiftTooLong},
    AnswerCode{11, u"Разница во времени ККТ и указанной в команде инициализации больше 5 минут",
        AnswerCode::Command},
    AnswerCode{
        12, u"Вводимая дата более ранняя, чем дата последней фискальной операции", AnswerCode::Command},
    AnswerCode{13,
        u"Не был задан заголовок документа, что делает невозможным формирование фискального документа",
        AnswerCode::Command},
    AnswerCode{14, u"Отрицательный результат", AnswerCode::Command},
    AnswerCode{15, u"Ошибка дисплея покупателя", AnswerCode::Command},
    AnswerCode{32, u"Фатальная ошибка ККТ", AnswerCode::Fatal},
    AnswerCode{33, u"Превышено кол-во попыток коррекции MAC-адреса или заводского номера", AnswerCode::Fatal},
    AnswerCode{36, u"Зарезервировано", AnswerCode::Fatal},
    AnswerCode{37, u"Зарезервировано", AnswerCode::Fatal},
    AnswerCode{38, u"Зарезервировано", AnswerCode::Fatal},
    AnswerCode{81, u"Неверная команда ФН", AnswerCode::Command},
    AnswerCode{82, u"Неверное состояние ФН", AnswerCode::Command},
    AnswerCode{83, u"Ошибка ФН", AnswerCode::Command},
    AnswerCode{84, u"Ошибка криптографического сопроцессора в составе ФН", AnswerCode::Command},
    AnswerCode{85, u"Закончен срок эксплуатации ФН", AnswerCode::Command},
    AnswerCode{86, u"Архив ФН переполнен", AnswerCode::Command},
    AnswerCode{87, u"Неверные дата или время ФН", AnswerCode::Command},
    AnswerCode{88, u"Нет запрошенных данных в ФН", AnswerCode::Command},
    AnswerCode{89, u"Некорректное значение параметров команды ФН", AnswerCode::Command},
    AnswerCode{90, u"Некорректная команда (команда не разрешена в данном режиме функционирования). ФН в 1.1",
        AnswerCode::Command},
    AnswerCode{
        91, u"Неразрешенные реквизиты (реквизит должен формироваться на стороне ФН)", AnswerCode::Command},
    AnswerCode{92, u"Дублирование данных", AnswerCode::Command},
    AnswerCode{93, u"Отсутствуют данные", AnswerCode::Command},
    AnswerCode{94, u"Кол-во позиций в документе превысило допустимый предел", AnswerCode::Command},
    AnswerCode{96, u"Превышение размеров TLV данных", AnswerCode::Command},
    AnswerCode{97, u"Нет транспортного соединения с ОФД", AnswerCode::Command},
    AnswerCode{98, u"Исчерпан ресурс криптографического сопроцессора ФН", AnswerCode::Command},
    AnswerCode{100, u"Исчерпан ресурс хранения документов для ОФД", AnswerCode::Command},
    AnswerCode{101, u"Исчерпан ресурс ожидания передачи сообщения в ОФД", AnswerCode::Command},
    AnswerCode{102, u"Продолжительность смены в ФН превысила 24 часа", AnswerCode::Command},
    AnswerCode{103, u"Неверная разница во времени между двумя операциями", AnswerCode::Command},
    AnswerCode{104, u"Некорректный параметр, не соответствующий требованиям", AnswerCode::Command},
    AnswerCode{105, u"Реквизит не соответствует параметрам регистрации (продажа подакцизных товаров или СНО)",
        AnswerCode::Command},
    AnswerCode{112, u"Сообщение от ОФД не может быть принято", AnswerCode::Command},
    AnswerCode{115, u"Ошибка сервиса обновления ключей проверки КМ", AnswerCode::Command},
    AnswerCode{116, u"Неизвестный ответ сервиса обновления ключей проверки КМ", AnswerCode::Command},
    AnswerCode{130,
        u"Запрещена работа с маркированными товарами (не установлен признак работы с маркированными товарами)",
        AnswerCode::Command},
    AnswerCode{131, u"Неверная последовательность команд группы B (при проверке кода маркировки)",
        AnswerCode::Command},
    AnswerCode{132, u"Работа с маркированными товарами заблокирована", AnswerCode::Command},
    AnswerCode{133, u"Переполнена таблица хранения КМ", AnswerCode::Command},
    AnswerCode{140, u"В блоке TLV отсутствуют необходимые реквизиты", AnswerCode::Command},
    AnswerCode{142, u"В реквизите 2007 содержится КМ, который ранее не проверялся в ФН", AnswerCode::Command},
    AnswerCode{160, u"ФН не поддерживает указанный ФФД или команда недоступна в текущей версии ФФД",
        AnswerCode::Command},
};

constexpr AnswerCode unknownCode{-1, u"Неизвестная ошибка", AnswerCode::Command};

} // namespace

const AnswerCode& answerCodeInfo(int code)
{
    const auto* const found = std::find_if(answerCodes.begin(), answerCodes.end(),
        [code](const AnswerCode& candidate) { return candidate.code == code; });
    return found == answerCodes.end() ? unknownCode : *found;
}

} // namespace spfhex
