#pragma once

#include <QList>
#include <QtGlobal>

#include <optional>

class FrPosition;

namespace receipt {

/// The sums of a receipt line in whole units, so that what is checked here is exact: kopecks and thousandths.
struct LineSum
{
    qint64 price = 0;
    qint64 quantity = 0;
    qint64 discount = 0;

    /// Price times quantity, rounded to kopecks, halves up.
    qint64 gross() const;
    /// What the line costs.
    qint64 amount() const { return gross() - discount; }
    /// The register gets one price per unit in whole kopecks and multiplies by itself: true when that gives
    /// the amount.
    bool isDiscountDivisible() const;
    /// The nearest discounts, down and up, that the register can express.
    std::optional<qint64> nearestDiscount(int step) const;
    /// Units can be told apart only in a whole quantity.
    bool isWhole() const { return quantity % 1000 == 0; }
    /// A whole quantity in at most two lines that the register can express, the larger price after discount
    /// first: the prices differ by one kopeck and the amounts add up to that of this line.
    QList<LineSum> split() const;
};

/// The sums of a position that was read from a receipt.
LineSum lineSumOf(const FrPosition& position);

} // namespace receipt
