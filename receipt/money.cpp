#include "money.h"

#include <algorithm>
#include <cmath>

namespace receipt {

QString moneyText(qint64 kopecks)
{
    return QString::number(roubles(kopecks), 'f', 2);
}

double roubles(qint64 kopecks)
{
    return static_cast<double>(kopecks) / 100.0;
}

qint64 kopecksOf(double roubles)
{
    return qRound64(roubles * 100.0);
}

std::optional<qint64> fixedPoint(double value, int decimals)
{
    const double scaled = value * std::pow(10.0, decimals);
    const double whole = std::round(scaled);
    // A decimal fraction is never exact as a double, and what a host has computed drifts by a few units of
    // its last place. Whatever someone has written with a digit too many is off by more.
    const double drift = std::max(1e-9, 1e-13 * std::abs(scaled));
    // What does not fit is no sum; infinity is off by what is no number.
    if (!(std::abs(scaled - whole) <= drift) || std::abs(whole) >= 9e18)
        return std::nullopt;
    return static_cast<qint64>(whole);
}

} // namespace receipt
