#pragma once

#include <QString>

namespace sale {

/// What the register said of a marking code before its sale.
struct MarkCheck
{
    /// As it was scanned, with its group separators.
    QString markingCode;
    /// Value of tag 2106; judgeMark says what it means.
    int result = 0;
    /// Where the receipt has it: "items[2].markingCode".
    QString path = {};
};

} // namespace sale
