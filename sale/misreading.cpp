#include "misreading.h"

#include <QStringList>

#include <algorithm>

namespace sale {

namespace {

/// As it may stand in an answer, and as what is left of it after a change may be read.
QStringList answeredTexts(qint64 kopecks)
{
    const double roubles = static_cast<double>(kopecks) / 100;
    return {QString::number(roubles, 'f', 2), QString::number(roubles, 'g', 15)};
}

/// One character changed, lost or added.
bool isOneByteApart(const QString& one, const QString& other)
{
    if (one.size() > other.size())
        return isOneByteApart(other, one);
    if (other.size() - one.size() > 1)
        return false;
    const auto start = std::mismatch(one.cbegin(), one.cend(), other.cbegin());
    const qsizetype same = start.first - one.cbegin();
    const qsizetype skipped = one.size() == other.size() ? 1 : 0;
    return one.mid(same + skipped) == other.mid(same + 1);
}

bool isOneByteApart(qint64 one, qint64 other)
{
    for (const QString& text : answeredTexts(one)) {
        for (const QString& otherText : answeredTexts(other)) {
            if (isOneByteApart(text, otherText))
                return true;
        }
    }
    return false;
}

} // namespace

PaymentSums withoutZeros(const PaymentSums& sums)
{
    PaymentSums rest = sums;
    rest.removeIf([](const std::pair<const int&, qint64&>& sum) { return sum.second == 0; });
    return rest;
}

PaymentSums difference(const PaymentSums& sums, const PaymentSums& less)
{
    PaymentSums rest = sums;
    for (auto sum = less.cbegin(); sum != less.cend(); ++sum)
        rest[sum.key()] -= sum.value();
    return withoutZeros(rest);
}

bool isMisreading(const PaymentSums& read, const PaymentSums& truth)
{
    const QList<int> wrong = difference(read, truth).keys();
    const auto isApart = [&](int kind) { return isOneByteApart(read.value(kind), truth.value(kind)); };
    if (wrong.size() == 1 && isApart(wrong.constFirst()))
        return true;
    return std::all_of(wrong.cbegin(), wrong.cend(), [&read](int kind) { return read.value(kind) == 0; });
}

} // namespace sale
