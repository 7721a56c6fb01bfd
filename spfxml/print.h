#pragma once

#include <efrdriver.h>

#include <QList>
#include <QString>

struct Barcode;
class FrPrintData;

namespace spfxml {

/// Builds the text that the register prints in a document. Fonts and barcodes travel inside the text as
/// sequences that begin with U+203C; the register draws the barcodes by itself.
class Print
{
public:
    explicit Print(const QList<FrPrintData>& items);

    void addItems(const QList<FrPrintData>& items);
    /// The undefined font keeps the one of the text before.
    void addText(EFrDriver::FontTypes font, const QList<QString>& lines);
    /// EAN-13 and QR; any other barcode adds nothing.
    void addBarcode(const Barcode& barcode);
    QList<QString> getResult() const { return m_result; }

    /// The register's number of the font; 0 is the normal one.
    static int fontModeFromFontTypes(EFrDriver::FontTypes font);

private:
    QList<QString> m_result;
    qint32 m_fontMode = 0;
};

} // namespace spfxml
