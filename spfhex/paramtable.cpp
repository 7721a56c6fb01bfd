#include "paramtable.h"

#include <array>

namespace spfhex::utils {

namespace {

struct Row
{
    int number;
    DataType type;
    const char* description;
    int min;
    int max;
    bool readOnly;
};

// Rows of the same kind stand once, with the first and the last number.
struct ArrayRows
{
    int array;
    int first;
    int last;
    DataType type;
    const char* description;
    int min;
    int max;
    bool readOnly;
};

constexpr std::array rows{
    Row{1, DataType::Number, "Номер кассы", 1, 9999, false},
    Row{2, DataType::Number, "Режимы печати", 1, 2147483647, false},
    Row{4, DataType::Number, "Открытие ящика", 0, 1, false},
    Row{5, DataType::Number, "Логотип компании", 0, 1, false},
    Row{6, DataType::Number, "Контроль наличных", 0, 1, false},
    Row{7, DataType::Number, "Параметры(флаги) печати отчета об итогах смены", 1, 2147483647, false},
    Row{8, DataType::Number, "Автоматическая инкассация", 0, 1, false},
    Row{11, DataType::Number, "Тип отрезки чека", 1, 2147483647, false},
    Row{12, DataType::Number, "Печать налогов, алгоритм расчета налогов", 1, 2147483647, false},
    Row{13, DataType::Number, "Дизайн чека", 0, 3, false},
    Row{20, DataType::Array, "Строки клише для документов", 0, 0, false},
    Row{21, DataType::Array, "Строки окончания чеков", 0, 0, false},
    Row{22, DataType::Array, "Название типов платежа для печати в блоке чека, а также в отчетах", 0, 0,
        false},
    Row{23, DataType::Array, "Имя ставки налога", 0, 0, false},
    Row{24, DataType::Array, "Процент ставки налога", 0, 0, false},
    Row{25, DataType::String, "Строка для печати перед налогами в чеке", 0, 40, false},
    Row{26, DataType::Array, "Наименование товарной группы", 0, 0, false},
    Row{27, DataType::String, "Название раздела для печати товарных групп в отчете о закрытии смены", 0, 40,
        false},
    Row{30, DataType::Number, "Автоматическая доплата при закрытии чека", 0, 1, false},
    Row{31, DataType::String, "Пароль для посылки данных", 4, 4, false},
    Row{37, DataType::Number, "Дополнительные настройки", 0, 2147483647, false},
    Row{38, DataType::Number, "Отключение дополнительной строки клише", 0, 1, false},
    Row{40, DataType::Number, "Реквизиты чека", 0, 2147483647, false},
    Row{41, DataType::Array, "Ширина столбцов для экономичного дизайна чека", 0, 0, false},
    Row{50, DataType::String, "Заводской номер ККТ", 20, 20, true},
    Row{51, DataType::Number, "Признак DHCP", 0, 1, false},
    Row{52, DataType::String, "Статический IP-адрес", 7, 15, false},
    Row{53, DataType::String, "IP сетевого шлюза", 7, 15, false},
    Row{54, DataType::String, "Маска подсети", 7, 15, false},
    Row{55, DataType::Number, "Наличие прокси-сервера", 0, 1, false},
    Row{56, DataType::String, "IP-адрес прокси-сервера", 7, 15, false},
    Row{57, DataType::Number, "Порт прокси-сервера", 0, 65535, false},
    Row{58, DataType::String, "IP-адрес предпочитаемого DNS-сервера", 7, 15, false},
    Row{59, DataType::String, "IP-адрес альтернативного DNS-сервера", 7, 15, false},
    Row{60, DataType::Number, "Ручная или автоматическая настройка DNS", 0, 1, false},
    Row{62, DataType::String, "Хост сервера ОФД", 0, 40, false},
    Row{63, DataType::Number, "Порт сервера ОФД", 0, 65535, false},
    Row{64, DataType::String, "URL сайта ФНС", 0, 64, false},
    Row{65, DataType::String, "Адрес электронной почты отправителя чека", 0, 64, false},
    Row{67, DataType::Number, "Тип транспорта с управляющим компьютером(хостом)", 0, 6, false},
    Row{68, DataType::Number, "Порт TCP-сервера для взаимодействия с хостом", 0, 65535, false},
    Row{70, DataType::String, "MAC-адрес", 17, 17, false},
    Row{71, DataType::String, "Хост сервера маркировки", 0, 40, false},
    Row{72, DataType::Number, "Порт сервера маркировки", 0, 65535, false},
    Row{73, DataType::Number, "Время ожидания на запрос о КМ", 250, 60000, false},
    Row{74, DataType::String, "Хост сервера ОКП", 0, 40, false},
    Row{75, DataType::Number, "Порт сервера ОКП", 0, 65535, false},
    Row{81, DataType::Number, "Автопереключение на НДС 20%", 0, 1, false},
    Row{82, DataType::Date, "Дата автопереключения на НДС 20%", 6, 6, false},
};

constexpr std::array arrayRows{
    ArrayRows{20, 0, 3, DataType::String, nullptr, 0, -1, false},
    ArrayRows{21, 0, 1, DataType::String, nullptr, 0, -1, false},
    ArrayRows{22, 0, 4, DataType::String, nullptr, 0, 30, true},
    ArrayRows{23, 0, 5, DataType::String, nullptr, 0, 30, true},
    ArrayRows{24, 0, 5, DataType::Percent, nullptr, 0, -1, true},
    ArrayRows{26, 1, 6, DataType::String, nullptr, 0, 40, false},
    ArrayRows{41, 0, 0, DataType::Number, "Ширина столбца <Наименование>", 1, 128, false},
    ArrayRows{41, 1, 1, DataType::Number, "Ширина столбца <НДС>", 10, 10, true},
    ArrayRows{41, 2, 2, DataType::Number, "Ширина столбца <Цена>", 6, 9, false},
    ArrayRows{41, 3, 3, DataType::Number, "Ширина столбца <Кол-во>", 7, 9, false},
    ArrayRows{41, 4, 4, DataType::Number, "Ширина столбца <Сумма>", 7, 10, false},
};

QMap<int, TableParameter> subParams(int array)
{
    QMap<int, TableParameter> params;
    for (const ArrayRows& group : arrayRows) {
        if (group.array != array)
            continue;
        for (int row = group.first; row <= group.last; ++row)
            params.insert(row, {group.type, group.description, group.min, group.max, {}, group.readOnly});
    }
    return params;
}

} // namespace

TableParameter::TableParameter(DataType type, const char* description, int min, int max,
    const QMap<int, TableParameter>& subParams, bool readOnly)
    : m_type(type)
    , m_description(description)
    , m_min(min)
    , m_max(max)
    , m_subParams(subParams)
    , m_readOnly(readOnly)
{
}

QMap<int, TableParameter> getParamTableStructure()
{
    QMap<int, TableParameter> table;
    for (const Row& row : rows) {
        table.insert(
            row.number, {row.type, row.description, row.min, row.max, subParams(row.number), row.readOnly});
    }
    return table;
}

} // namespace spfhex::utils
