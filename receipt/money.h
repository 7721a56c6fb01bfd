#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

namespace receipt {

/// "12.50" for 1250 kopecks.
QString moneyText(qint64 kopecks);
/// 12.5 for 1250 kopecks, as the contract takes sums.
double roubles(qint64 kopecks);
/// 1250 for 12.5 roubles; what the contract holds of a sum may be a little off.
qint64 kopecksOf(double roubles);
/// The number in whole 10^-decimals; nothing when it has more decimals than that.
std::optional<qint64> fixedPoint(double value, int decimals);

} // namespace receipt
