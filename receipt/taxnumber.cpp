#include "taxnumber.h"

#include <QString>

#include <algorithm>
#include <array>

namespace receipt {

namespace {

constexpr qsizetype companyLength = 10;
constexpr qsizetype personLength = 12;
// Each digit in front of a check digit has a weight; these are the weights of the longest row of digits, the
// shorter ones lack the first of them.
constexpr std::array<int, 11> weights{3, 7, 2, 4, 10, 3, 5, 9, 4, 6, 8};

/// True when the digit is what the digits before it demand.
bool isCheckDigit(const QString& digits, qsizetype position)
{
    int sum = 0;
    const qsizetype first = static_cast<qsizetype>(weights.size()) - position;
    for (qsizetype index = 0; index < position; ++index)
        sum += digits.at(index).digitValue() * weights[static_cast<std::size_t>(first + index)];
    return sum % 11 % 10 == digits.at(position).digitValue();
}

} // namespace

bool isInn(const QString& text)
{
    const bool isDigits = std::all_of(text.cbegin(), text.cend(),
        [](QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); });
    if (!isDigits)
        return false;
    if (text.length() == companyLength)
        return isCheckDigit(text, companyLength - 1);
    return text.length() == personLength && isCheckDigit(text, personLength - 2)
        && isCheckDigit(text, personLength - 1);
}

} // namespace receipt
