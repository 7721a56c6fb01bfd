#include "print.h"

#include <frprintdata.h>

#include <array>

namespace spfxml {

namespace {

QString padded(qsizetype value, int digits)
{
    return QString::number(value).rightJustified(digits, QLatin1Char('0'));
}

} // namespace

Print::Print(const QList<FrPrintData>& items)
{
    addItems(items);
}

void Print::addItems(const QList<FrPrintData>& items)
{
    EFrDriver::FontTypes font = EFrDriver::UndefinedFont;
    for (const FrPrintData& item : items) {
        switch (item.kind) {
        case FrPrintData::Text:
            addText(font, item.lines);
            break;
        case FrPrintData::BarcodeItem:
            addBarcode(item.barcode);
            break;
        case FrPrintData::FontChange:
            // Only the first font of the list counts: it is meant.
            font = item.fonts.value(0, EFrDriver::UndefinedFont);
            break;
        default:
            break;
        }
    }
}

void Print::addText(EFrDriver::FontTypes font, const QList<QString>& lines)
{
    if (font != EFrDriver::UndefinedFont)
        m_fontMode = fontModeFromFontTypes(font);
    if (m_fontMode == 0) {
        m_result.append(lines);
        return;
    }
    // The mode holds for one line only, so that each line names it anew.
    constexpr int fixedField = 28;
    const QString prefix = QStringLiteral("‼?f") + padded(m_fontMode, 3) + padded(fixedField, 4);
    for (const QString& line : lines)
        m_result.append(prefix + line);
}

void Print::addBarcode(const Barcode& barcode)
{
    const qsizetype length = barcode.text.length();
    if (barcode.type == Barcode::Qr)
        m_result.append(QStringLiteral("‼?q") + padded(length, 4) + barcode.text);
    else if (barcode.type == Barcode::Ean13)
        m_result.append(QStringLiteral("‼?b") + padded(length, 2) + barcode.text);
}

int Print::fontModeFromFontTypes(EFrDriver::FontTypes font)
{
    static constexpr std::array modes{8, 0, 32, 1, 16, 128};
    if (font < EFrDriver::DoubleSizeFont || font > EFrDriver::InvertedFont)
        return 0;
    return modes.at(static_cast<std::size_t>(font - EFrDriver::DoubleSizeFont));
}

} // namespace spfxml
