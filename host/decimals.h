#pragma once

#include <QString>

/// The number with that many decimals, as both protocols write sums and quantities. What rounds to zero has
/// no sign: a discount that takes the whole price leaves a -0.0 behind. Inline, so that the plugin asks
/// nothing new of its host.
inline QString fixedDecimals(double value, int decimals)
{
    const QString text = QString::number(value, 'f', decimals);
    return text.startsWith(QLatin1Char('-')) && text.toDouble() == 0 ? text.sliced(1) : text;
}

/// Roubles with kopecks.
inline QString moneyText(double sum)
{
    return fixedDecimals(sum, 2);
}

inline QString quantityText(double count)
{
    return fixedDecimals(count, 3);
}
