#pragma once

#include <QString>
#include <QStringList>

namespace receipt {
struct Receipt;
struct ReceiptItem;
} // namespace receipt

namespace sale {

/// The marked goods of a receipt, as the journal takes them.
struct MarkEntry
{
    /// What each code names, see receipt::markIdentity.
    QStringList marks;
    bool isReturn = false;
};

MarkEntry markEntryOf(const receipt::Receipt& receipt);

/// Where the receipt has the marking code: "items[2].markingCode". The index is for an item that was not read
/// from a file.
QString markPath(const receipt::ReceiptItem& item, qsizetype index);

} // namespace sale
