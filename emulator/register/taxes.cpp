#include "register/taxes.h"

#include "register/item.h"

#include <algorithm>
#include <iterator>

namespace emulator::taxes {

namespace {

struct TaxRate
{
    int code;
    int percent;
};

// Rates whose tax is contained in the price, with the percentage it is counted by.
constexpr TaxRate taxRates[]
    = {{1, 20}, {2, 10}, {3, 20}, {4, 10}, {7, 5}, {8, 7}, {9, 5}, {10, 7}, {11, 22}, {12, 22}};
constexpr int withoutTax = 6;

Money containedTax(Money sum, int percent)
{
    const qint64 whole = 100 + percent;
    return (sum * percent * 2 + whole) / (whole * 2);
}

Money taxOf(Money sum, int code)
{
    const auto* const rate = std::find_if(std::begin(taxRates), std::end(taxRates),
        [code](const TaxRate& candidate) { return candidate.code == code; });
    return rate == std::end(taxRates) ? sum : containedTax(sum, rate->percent);
}

} // namespace

QMap<int, Money> sums(const QList<Item>& items)
{
    QMap<int, Money> sums;
    for (const Item& item : items)
        sums[item.tax == 0 ? withoutTax : item.tax] += item.sum();
    for (auto sum = sums.begin(); sum != sums.end(); ++sum)
        sum.value() = taxOf(sum.value(), sum.key());
    return sums;
}

} // namespace emulator::taxes
