#include "register/settingtable.h"

namespace emulator {

// clang-format off
const QList<SettingEntry>& settingTable()
{
    using enum SettingEntry::Kind;
    const QString on = QStringLiteral("true");
    const QString off = QStringLiteral("false");
    static const QList<SettingEntry> table{
        {setting::clockInShift, Flag, off},
        {QStringLiteral("MACRO.FDDesign.ItemCutMode"), Text, QStringLiteral("0")},
        {QStringLiteral("MACRO.FDDesign.PrintQRWithText"), Flag, off},
        {QStringLiteral("MACRO.FDDesign.NDSInBlocks"), Flag, off},
        {QStringLiteral("MACRO.FDDesign.NDSLetterCode"), Flag, off},
        {setting::operatorName, Flag, off},
        {setting::receiptSite, Flag, off},
        {setting::paymentObjects, Flag, off},
        {setting::drawerSection, Flag, on},
        {setting::printedGrandTotals, Flag, off},
        {setting::zeroCounters, Flag, on},
        {setting::answeredGrandTotals, Flag, off},
        {QStringLiteral("MACRO.Logging.LogLevel"), Count, QStringLiteral("3")},
        {QStringLiteral("MACRO.Receipt.DiscountOnChange"), Text, QStringLiteral("0")},
        {setting::siteAddress, Text, QStringLiteral("receipt.example")},
        {QStringLiteral("OFD.OFD.OFD_Host"), Text, QStringLiteral("ofd.example")},
        {QStringLiteral("OFD.OFD.OFD_Port"), Count, QStringLiteral("7777")},
        {QStringLiteral("POS.Net.NetDNS1"), Text, QStringLiteral("0.0.0.0")},
        {QStringLiteral("POS.Net.NetDNS2"), Text, QStringLiteral("0.0.0.0")},
        {QStringLiteral("POS.Net.NetGate"), Text, QStringLiteral("192.168.0.1")},
        {QStringLiteral("POS.Net.NetIP"), Text, QStringLiteral("192.168.0.10")},
        {QStringLiteral("POS.Net.NetMask"), Text, QStringLiteral("255.255.255.0")},
        {QStringLiteral("POS.Net.NetType"), Text, QStringLiteral("0")},
        {QStringLiteral("POS.Proxy.Host"), Text, QString()},
        {QStringLiteral("POS.Proxy.Password"), Text, QString()},
        {QStringLiteral("POS.Proxy.Port"), Count, QStringLiteral("0")},
        {QStringLiteral("POS.Proxy.Type"), Text, QStringLiteral("0")},
        {QStringLiteral("POS.Proxy.User"), Text, QString()},
        {QStringLiteral("POS.comport.flowcontrol"), Text, QStringLiteral("0")},
        {QStringLiteral("POS.comport.useppp"), Flag, off},
        {setting::errorAnswers, Flag, on},
        {QStringLiteral("POS.Sessions.SessionsMaxQueue"), Count, QStringLiteral("16")},
        {QStringLiteral("POS.Sessions.SessionMaxLifetime"), Count, QStringLiteral("60")},
        {QStringLiteral("POS.Sessions.SessionsUseFSCache"), Flag, off},
        {QStringLiteral("POS.Sessions.SessionsSave"), Flag, off},
        {QStringLiteral("PRN.CDSettings.CDType"), Text, QStringLiteral("0")},
        {QStringLiteral("PRN.CDSettings.UseCD"), Flag, off},
        {QStringLiteral("PRN.Printer.CompactPrint"), Flag, off},
        {QStringLiteral("PRN.Printer.NarrowWidth"), Flag, off},
        {setting::width, Width, QString()},
        {setting::userInHeader, Flag, off},
        {setting::header, SettingEntry::Kind::Lines, QString()},
        {setting::picture, SettingEntry::Kind::Picture, QString()},
        {setting::printPicture, Flag, QString()},
        {setting::cutter, Flag, on},
        {QStringLiteral("PRN.QR.QRFastPrint"), Flag, off},
        {QStringLiteral("IMS.ims-client.ims_bootstrap_suite_url"), Text, QString()},
        {QStringLiteral("IMS.ims-client.ims_server_host"), Text, QStringLiteral("ims.example")},
        {QStringLiteral("IMS.ims-client.ims_session_interval_idle_sec"), Interval, QStringLiteral("3600")},
        {QStringLiteral("IMS.ims-client.ims_session_interval_tr_sec"), Interval, QStringLiteral("60")},
        {QStringLiteral("FN.FNCounters.FNCountersUseFSCache"), Flag, off},
    };
    return table;
}
// clang-format on

} // namespace emulator
