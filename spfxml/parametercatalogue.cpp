#include "parametercatalogue.h"

#include <array>

namespace spf::utils {

namespace {

using spfxml::RequestParams;
using ParamType = RequestParams::EParamType;

struct Section
{
    QStringView name;
    QStringView text;
};

struct Subsection
{
    QStringView section;
    QStringView name;
    QStringView text;
};

struct Parameter
{
    QStringView section;
    QStringView subsection;
    QStringView name;
    ParamType type;
    QStringView text;
};

// In the order in which the device is asked. The names are the device's keys, uneven as they are.
constexpr std::array sections{
    Section{u"MACRO", u"Настройки печати"},
    Section{u"OFD", u"Параметры ОФД"},
    Section{u"POS", u"Настройки подключения"},
    Section{u"PRN", u"Настройки принтера"},
    Section{u"IMS", u"Параметры IMS"},
    Section{u"FN", u"Параметры FN"},
};

constexpr std::array subsections{
    Subsection{u"MACRO", u"EMERGENCY", u"Настройки аварийного режима"},
    Subsection{u"MACRO", u"FDDesign", u"Параметры печати чека"},
    Subsection{u"MACRO", u"KKTCounters", u"Параметры счётчиков ККТ"},
    Subsection{u"MACRO", u"Logging", u"Настройки протоколирования"},
    Subsection{u"MACRO", u"Receipt", u"Параметры регистрации чека"},
    Subsection{u"OFD", u"OFD", u"Параметры ОФД"},
    Subsection{u"POS", u"Net", u"Параметры сети"},
    Subsection{u"POS", u"Proxy", u"Параметры прокси-сервера"},
    Subsection{u"POS", u"comport", u"Параметры COM-порта"},
    Subsection{u"POS", u"Transport", u"Параметры транспортного уровня"},
    Subsection{u"POS", u"Sessions", u"Параметры сеанса"},
    Subsection{u"PRN", u"CDSettings", u"Параметры дисплея покупателя"},
    Subsection{u"PRN", u"Printer", u"Параметры принтера"},
    Subsection{u"PRN", u"PrinterHeader", u"Параметры клише"},
    Subsection{u"PRN", u"LogoImage", u"Параметры логотипа"},
    Subsection{u"PRN", u"Cutter", u"Отрезчик"},
    Subsection{u"PRN", u"QR", u"Способ печати QR кода"},
    Subsection{u"IMS", u"ims-client", u"Параметры ims клиента"},
    Subsection{u"FN", u"FNCounters", u"Параметры счетчиков"},
};

constexpr std::array parameters{
    Parameter{u"MACRO", u"EMERGENCY", u"EmergencyRTCSet", ParamType::Text,
        u"Установка времени ККТ в открытой смене"},
    Parameter{
        u"MACRO", u"FDDesign", u"ItemCutMode", ParamType::Text, u"Перенос наименований товарных позиций"},
    Parameter{u"MACRO", u"FDDesign", u"PrintQRWithText", ParamType::Text, u"Печать QR кода вместе с текстом"},
    Parameter{u"MACRO", u"FDDesign", u"NDSInBlocks", ParamType::Text, u"Блочная форма вывода НДС"},
    Parameter{u"MACRO", u"FDDesign", u"NDSLetterCode", ParamType::Text, u"Буквенная кодировка НДС"},
    Parameter{u"MACRO", u"FDDesign", u"PrintOFDName", ParamType::Text, u"Печатать в чеке наименование ОФД"},
    Parameter{u"MACRO", u"FDDesign", u"PrintReceiptSite", ParamType::Text, u"Печатать в чеке сайт чеков"},
    Parameter{
        u"MACRO", u"FDDesign", u"PrintTag1212", ParamType::Text, u"Печатать в чеке признак предмета расчёта"},
    Parameter{u"MACRO", u"FDDesign", u"PrintCashDrawerSection", ParamType::Text,
        u"Печать счётчиков денежного ящика в отчётах"},
    Parameter{u"MACRO", u"KKTCounters", u"UseCumulativeCounters", ParamType::Text,
        u"Использовать накопительные итоги в отчётах"},
    Parameter{u"MACRO", u"KKTCounters", u"PrintZeroCounters", ParamType::Text,
        u"Печатать счётчики с нулевыми значениями"},
    Parameter{u"MACRO", u"KKTCounters", u"GetCumulativeCounters", ParamType::Text,
        u"Возвращать накопительные итоги в ответах на запросы счётчиков"},
    Parameter{u"MACRO", u"Logging", u"LogLevel", ParamType::Text, u"Уровень протоколирования"},
    Parameter{u"MACRO", u"Receipt", u"DiscountOnChange", ParamType::Text, u"Округление"},
    Parameter{u"OFD", u"OFD", u"1208", ParamType::Text, u"Сайт чеков"},
    Parameter{u"OFD", u"OFD", u"OFD_Host", ParamType::Text, u"Хост ОФД"},
    Parameter{u"OFD", u"OFD", u"OFD_Port", ParamType::Text, u"Порт ОФД"},
    Parameter{u"POS", u"Net", u"NetDNS1", ParamType::Text, u"IP адрес для DNS сервера 1"},
    Parameter{u"POS", u"Net", u"NetDNS2", ParamType::Text, u"IP адрес для DNS сервера 2"},
    Parameter{u"POS", u"Net", u"NetGate", ParamType::Text, u"Шлюз по умолчанию"},
    Parameter{u"POS", u"Net", u"NetIP", ParamType::Text, u"IP адрес"},
    Parameter{u"POS", u"Net", u"NetMask", ParamType::Text, u"Маска подсети"},
    Parameter{u"POS", u"Net", u"NetType", ParamType::Text, u"Тип сети"},
    Parameter{u"POS", u"Proxy", u"Host", ParamType::Text, u"Адрес хоста"},
    Parameter{u"POS", u"Proxy", u"Password", ParamType::Text, u"Пароль"},
    Parameter{u"POS", u"Proxy", u"Port", ParamType::Text, u"Порт"},
    Parameter{u"POS", u"Proxy", u"Type", ParamType::Text, u"Тип прокси"},
    Parameter{u"POS", u"Proxy", u"User", ParamType::Text, u"Логин"},
    Parameter{u"POS", u"comport", u"flowcontrol", ParamType::Text, u"Управление потоком"},
    Parameter{u"POS", u"comport", u"useppp", ParamType::Text, u"RS-232 PPP"},
    Parameter{u"POS", u"Transport", u"ResponseOnError", ParamType::Text,
        u"Формировать ответ на некорректный транспортный пакет"},
    Parameter{u"POS", u"Sessions", u"SessionsMaxQueue", ParamType::Text, u"Максимальная длина очереди"},
    Parameter{
        u"POS", u"Sessions", u"SessionMaxLifetime", ParamType::Text, u"Максимальное время жизни сеанса"},
    Parameter{u"POS", u"Sessions", u"SessionsUseFSCache", ParamType::Text, u"Использовать кэш для сеанса"},
    Parameter{u"POS", u"Sessions", u"SessionsSave", ParamType::Text, u"Сохранять сеансы на носителе"},
    Parameter{u"PRN", u"CDSettings", u"CDType", ParamType::Text, u"Тип дисплея покупателя"},
    Parameter{u"PRN", u"CDSettings", u"UseCD", ParamType::Text, u"Использование дисплея покупателя"},
    Parameter{u"PRN", u"Printer", u"CompactPrint", ParamType::Text, u"Плотная печать"},
    Parameter{u"PRN", u"Printer", u"NarrowWidth", ParamType::Text, u"Узкая лента"},
    Parameter{u"PRN", u"Printer", u"PrintWidthChars", ParamType::Text, u"Ширина бумаги"},
    Parameter{u"PRN", u"PrinterHeader", u"PrintUserAddrInCliche", ParamType::Text,
        u"Печать реквизитов пользователя в клише"},
    Parameter{u"PRN", u"PrinterHeader", u"Cliche", ParamType::Text, u"Клише"},
    Parameter{u"PRN", u"LogoImage", u"Image", ParamType::Text,
        u"Изображение в шестнадцатиричном формате в текстовом представлении"},
    Parameter{u"PRN", u"LogoImage", u"PrintLogo", ParamType::Text, u"Печать логотипа"},
    Parameter{u"PRN", u"Cutter", u"UseCutter", ParamType::Text, u"Включение/выключение отрезчика"},
    Parameter{
        u"PRN", u"QR", u"QRFastPrint", ParamType::Text, u"Включение/выключение ускоренной печати QR-кода"},
    Parameter{u"IMS", u"ims-client", u"ims_bootstrap_suite_url", ParamType::Text, u"URL bootstrap комплекта"},
    Parameter{u"IMS", u"ims-client", u"ims_server_host", ParamType::Text, u"Хост ims сервера"},
    Parameter{u"IMS", u"ims-client", u"ims_session_interval_idle_sec", ParamType::Integer,
        u"Интервал опроса сервера без назначенного задания(сек)"},
    Parameter{u"IMS", u"ims-client", u"ims_session_interval_tr_sec", ParamType::Integer,
        u"Интервал опроса сервера при обработке задания(сек)"},
    Parameter{
        u"FN", u"FNCounters", u"FNCountersUseFSCache", ParamType::Text, u"Использовать кэш для счетчиков"},
};

RequestParams group(QStringView name, const QList<RequestParams>& children)
{
    return {ParamType::Structure, name.toString(), children};
}

QList<RequestParams> parametersOf(const Subsection& subsection)
{
    QList<RequestParams> nodes;
    for (const Parameter& parameter : parameters) {
        if (parameter.section == subsection.section && parameter.subsection == subsection.name)
            nodes.append({parameter.type, parameter.name.toString(), QVariant()});
    }
    return nodes;
}

QList<RequestParams> subsectionsOf(const Section& section)
{
    QList<RequestParams> nodes;
    for (const Subsection& subsection : subsections) {
        if (subsection.section == section.name)
            nodes.append(group(subsection.name, parametersOf(subsection)));
    }
    return nodes;
}

template <typename Rows>
QMap<QString, QString> captions(const Rows& rows)
{
    QMap<QString, QString> texts;
    for (const auto& row : rows)
        texts.insert(row.name.toString(), row.text.toString());
    return texts;
}

} // namespace

QList<RequestParams> getParamsList()
{
    QList<RequestParams> tree;
    for (const Section& section : sections)
        tree.append(group(section.name, subsectionsOf(section)));
    return tree;
}

QMap<QString, QString> getSectionsDescription()
{
    return captions(sections);
}

QMap<QString, QString> getSubsectionsDescription()
{
    return captions(subsections);
}

QMap<QString, QString> getParametersDescription()
{
    return captions(parameters);
}

} // namespace spf::utils
