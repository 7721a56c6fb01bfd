#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace emulator {

/// Kopecks. The register counts in whole kopecks, never in fractions of a rouble.
using Money = qint64;
/// Thousandths of a unit.
using Quantity = qint64;

/// Reads a decimal number with at most the given number of decimals as a whole number of the smallest units.
/// Anything else gives no value.
std::optional<qint64> parseDecimal(const QByteArray& text, int decimals);

/// The other way round: a whole number of the smallest units as a decimal number.
QString decimalText(qint64 value, int decimals);
QString moneyText(Money sum);
QString quantityText(Quantity quantity);

/// Sum of a position, rounded to the kopeck.
Money positionSum(Money price, Quantity quantity);

} // namespace emulator
