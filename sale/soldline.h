#pragma once

#include <QList>
#include <QString>

namespace receipt {
struct Receipt;
struct ReceiptItem;
} // namespace receipt

namespace sale {

/// A position as it is issued, as far as it tells what may come back.
struct SoldLine
{
    /// The same goods at the same price.
    bool operator==(const SoldLine& other) const { return isOfSameGoods(other) && price == other.price; }
    bool isOfSameGoods(const SoldLine& other) const { return name == other.name && mark == other.mark; }

    QString name;
    /// What the marking code names (receipt::markIdentity), which tells a piece from all others; empty for
    /// goods without.
    QString mark;
    /// Of a unit, after the discount; kopecks.
    qint64 price = 0;
};

SoldLine soldLineOf(const receipt::ReceiptItem& item);
/// How much of it the receipt has, thousandths.
qint64 quantityIn(const receipt::Receipt& receipt, const SoldLine& line);

} // namespace sale
