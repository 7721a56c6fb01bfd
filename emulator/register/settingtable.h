#pragma once

#include <QList>
#include <QString>

namespace emulator {

/// One of the settings that have names, as it leaves the factory.
struct SettingEntry
{
    enum class Kind { Text, Flag, Count, Interval, Width, Lines, Picture };

    /// Section, subsection and name with points between them.
    QString path;
    Kind kind;
    QString initial;
};

/// Settings that the register itself looks at.
namespace setting {
inline const QString clockInShift = QStringLiteral("MACRO.EMERGENCY.EmergencyRTCSet");
inline const QString operatorName = QStringLiteral("MACRO.FDDesign.PrintOFDName");
inline const QString receiptSite = QStringLiteral("MACRO.FDDesign.PrintReceiptSite");
inline const QString paymentObjects = QStringLiteral("MACRO.FDDesign.PrintTag1212");
inline const QString drawerSection = QStringLiteral("MACRO.FDDesign.PrintCashDrawerSection");
inline const QString printedGrandTotals = QStringLiteral("MACRO.KKTCounters.UseCumulativeCounters");
inline const QString zeroCounters = QStringLiteral("MACRO.KKTCounters.PrintZeroCounters");
inline const QString answeredGrandTotals = QStringLiteral("MACRO.KKTCounters.GetCumulativeCounters");
inline const QString siteAddress = QStringLiteral("OFD.OFD.1208");
inline const QString errorAnswers = QStringLiteral("POS.Transport.ResponseOnError");
inline const QString width = QStringLiteral("PRN.Printer.PrintWidthChars");
inline const QString userInHeader = QStringLiteral("PRN.PrinterHeader.PrintUserAddrInCliche");
inline const QString header = QStringLiteral("PRN.PrinterHeader.Cliche");
inline const QString picture = QStringLiteral("PRN.LogoImage.Image");
inline const QString printPicture = QStringLiteral("PRN.LogoImage.PrintLogo");
inline const QString cutter = QStringLiteral("PRN.Cutter.UseCutter");
} // namespace setting

const QList<SettingEntry>& settingTable();

} // namespace emulator
