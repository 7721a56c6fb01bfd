#include "xmlparameternames.h"

namespace frctl {

namespace {

constexpr XmlParameterName Names[] = {
    {"MACRO.EMERGENCY.EmergencyRTCSet", "Установка времени ККТ в открытой смене"},
    {"MACRO.FDDesign.ItemCutMode", "Перенос наименований товарных позиций"},
    {"MACRO.FDDesign.PrintQRWithText", "Печать QR кода вместе с текстом"},
    {"MACRO.FDDesign.NDSInBlocks", "Блочная форма вывода НДС"},
    {"MACRO.FDDesign.NDSLetterCode", "Буквенная кодировка НДС"},
    {"MACRO.FDDesign.PrintOFDName", "Печатать в чеке наименование ОФД"},
    {"MACRO.FDDesign.PrintReceiptSite", "Печатать в чеке сайт чеков"},
    {"MACRO.FDDesign.PrintTag1212", "Печатать в чеке признак предмета расчёта"},
    {"MACRO.FDDesign.PrintCashDrawerSection", "Печать счётчиков денежного ящика в отчётах"},
    {"MACRO.KKTCounters.UseCumulativeCounters", "Использовать накопительные итоги в отчётах"},
    {"MACRO.KKTCounters.PrintZeroCounters", "Печатать счётчики с нулевыми значениями"},
    {"MACRO.KKTCounters.GetCumulativeCounters",
        "Возвращать накопительные итоги в ответах на запросы счётчиков"},
    {"MACRO.Logging.LogLevel", "Уровень протоколирования"},
    {"MACRO.Receipt.DiscountOnChange", "Округление"},
    {"OFD.OFD.1208", "Сайт чеков"},
    {"OFD.OFD.OFD_Host", "Хост ОФД"},
    {"OFD.OFD.OFD_Port", "Порт ОФД"},
    {"POS.Net.NetDNS1", "IP адрес для DNS сервера 1"},
    {"POS.Net.NetDNS2", "IP адрес для DNS сервера 2"},
    {"POS.Net.NetGate", "Шлюз по умолчанию"},
    {"POS.Net.NetIP", "IP адрес"},
    {"POS.Net.NetMask", "Маска подсети"},
    {"POS.Net.NetType", "Тип сети"},
    {"POS.Proxy.Host", "Адрес хоста"},
    {"POS.Proxy.Password", "Пароль"},
    {"POS.Proxy.Port", "Порт"},
    {"POS.Proxy.Type", "Тип прокси"},
    {"POS.Proxy.User", "Логин"},
    {"POS.comport.flowcontrol", "Управление потоком"},
    {"POS.comport.useppp", "RS-232 PPP"},
    {"POS.Transport.ResponseOnError", "Формировать ответ на некорректный транспортный пакет"},
    {"POS.Sessions.SessionsMaxQueue", "Максимальная длина очереди"},
    {"POS.Sessions.SessionMaxLifetime", "Максимальное время жизни сеанса"},
    {"POS.Sessions.SessionsUseFSCache", "Использовать кэш для сеанса"},
    {"POS.Sessions.SessionsSave", "Сохранять сеансы на носителе"},
    {"PRN.CDSettings.CDType", "Тип дисплея покупателя"},
    {"PRN.CDSettings.UseCD", "Использование дисплея покупателя"},
    {"PRN.Printer.CompactPrint", "Плотная печать"},
    {"PRN.Printer.NarrowWidth", "Узкая лента"},
    {"PRN.Printer.PrintWidthChars", "Ширина бумаги"},
    {"PRN.PrinterHeader.PrintUserAddrInCliche", "Печать реквизитов пользователя в клише"},
    {"PRN.PrinterHeader.Cliche", "Клише"},
    {"PRN.LogoImage.Image", "Изображение в шестнадцатиричном формате в текстовом представлении"},
    {"PRN.LogoImage.PrintLogo", "Печать логотипа"},
    {"PRN.Cutter.UseCutter", "Включение/выключение отрезчика"},
    {"PRN.QR.QRFastPrint", "Включение/выключение ускоренной печати QR-кода"},
    {"IMS.ims-client.ims_bootstrap_suite_url", "URL bootstrap комплекта"},
    {"IMS.ims-client.ims_server_host", "Хост ims сервера"},
    {"IMS.ims-client.ims_session_interval_idle_sec", "Интервал опроса сервера без назначенного задания(сек)"},
    {"IMS.ims-client.ims_session_interval_tr_sec", "Интервал опроса сервера при обработке задания(сек)"},
    {"FN.FNCounters.FNCountersUseFSCache", "Использовать кэш для счетчиков"},
};

} // namespace

std::span<const XmlParameterName> xmlParameterNames()
{
    return Names;
}

} // namespace frctl
