#include "register/amounts.h"

#include <cmath>
#include <limits>

namespace emulator {

namespace {

// Ten digits before the point: what the fiscal drive can hold.
constexpr int longestNumber = 15;

} // namespace

std::optional<qint64> parseDecimal(const QByteArray& text, int decimals)
{
    const QByteArray trimmed = text.trimmed();
    const bool negative = trimmed.startsWith('-');
    const QByteArray digits = negative ? trimmed.mid(1) : trimmed;
    const qsizetype point = digits.indexOf('.');
    const QByteArray whole = point < 0 ? digits : digits.left(point);
    const QByteArray fraction = point < 0 ? QByteArray() : digits.mid(point + 1);
    if (whole.isEmpty() || whole.size() + decimals > longestNumber || fraction.size() > decimals)
        return std::nullopt;
    qint64 value = 0;
    for (const char digit : whole + fraction.leftJustified(decimals, '0')) {
        if (digit < '0' || digit > '9')
            return std::nullopt;
        value = value * 10 + (digit - '0');
    }
    return negative ? -value : value;
}

QString decimalText(qint64 value, int decimals)
{
    QString digits = QStringLiteral("%1").arg(std::abs(value), decimals + 1, 10, QLatin1Char('0'));
    if (decimals > 0)
        digits.insert(digits.size() - decimals, QLatin1Char('.'));
    return value < 0 ? QLatin1Char('-') + digits : digits;
}

QString moneyText(Money sum)
{
    return decimalText(sum, 2);
}

QString quantityText(Quantity quantity)
{
    return decimalText(quantity, 3);
}

Money positionSum(Money price, Quantity quantity)
{
    // Limits first: a product that does not fit is not a sum that a receipt can hold.
    const long double exact = static_cast<long double>(price) * static_cast<long double>(quantity) / 1000.0L;
    if (std::fabs(exact) > 1e15L)
        return std::numeric_limits<Money>::max() / 4;
    return static_cast<Money>(std::llround(exact));
}

} // namespace emulator
