#pragma once

#include <QString>

namespace frctl {

/// A sum of a register with two decimals. What rounds to zero has no sign.
inline QString shownSum(double sum)
{
    const QString text = QString::number(sum, 'f', 2);
    return text == QStringLiteral("-0.00") ? QStringLiteral("0.00") : text;
}

} // namespace frctl
