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
    FrPosition position;
    QString text;
    EFrDriver::FontTypes font = EFrDriver::UndefinedFont;
    Barcode barcode;
};

} // namespace receipt
