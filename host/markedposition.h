#pragma once

#include <QString>

/// A marking code to be checked before its goods enter a receipt.
struct MarkedPosition
{
    /// Planned state of the goods (tag 2003): 1 piece sold, 2 measured goods sold, 3 piece returned, 4
    /// measured goods returned, 255 unchanged.
    int status = 1;
    /// The code as scanned.
    QString markingCode;
    double quantity = 1.0;
    /// Tag 2108; 0 is a piece.
    int measureUnit = 0;
};
