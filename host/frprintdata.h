#pragma once

#include "barcode.h"
#include "efrdriver.h"
#include "frhost_export.h"

#include <QList>
#include <QString>

/// One print item that waits in a document: lines of text, a barcode, or a change of font.
class FRHOST_EXPORT FrPrintData
{
public:
    enum Kind { None = 0, Text = 1, BarcodeItem = 2, FontChange = 3 };

    static FrPrintData forText(const QList<QString>& lines);
    static FrPrintData forBcode(const Barcode& barcode);
    static FrPrintData forSetFont(const QList<EFrDriver::FontTypes>& fonts);

    /// Which of the three below is filled.
    int kind = None;
    QList<QString> lines;
    Barcode barcode;
    QList<EFrDriver::FontTypes> fonts;
};
