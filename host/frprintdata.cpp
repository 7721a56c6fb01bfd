#include "frprintdata.h"

FrPrintData FrPrintData::forText(const QList<QString>& lines)
{
    FrPrintData data;
    data.kind = Text;
    data.lines = lines;
    return data;
}

FrPrintData FrPrintData::forBcode(const Barcode& barcode)
{
    FrPrintData data;
    data.kind = BarcodeItem;
    data.barcode = barcode;
    return data;
}

FrPrintData FrPrintData::forSetFont(const QList<EFrDriver::FontTypes>& fonts)
{
    FrPrintData data;
    data.kind = FontChange;
    data.fonts = fonts;
    return data;
}
