#pragma once

#include "barcode.h"
#include "efrdriver.h"
#include "frposition.h"

#include <QString>

namespace receipt {

/// One entry of a receipt, in the order in which it is printed.
struct ReceiptItem
{
    enum Kind { Position, Text, BarcodeItem };

    Kind kind = Position;
    /// Where it stands in the file, "items[2]"; both halves of a split position stand there.
    QString path;
    FrPosition position;
    QString text;
    /// DoubleSizeFont is double width and height; a register that has no such font prints it wide alone.
    EFrDriver::FontTypes font = EFrDriver::UndefinedFont;
    Barcode barcode;

    bool isMarked() const { return !position.getMarkingCode().isEmpty(); }
};

} // namespace receipt
