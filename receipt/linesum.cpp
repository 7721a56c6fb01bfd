#include "linesum.h"

#include "frposition.h"
#include "money.h"

namespace receipt {

namespace {

qint64 divideRounded(qint64 numerator, qint64 denominator)
{
    return (numerator + denominator / 2) / denominator;
}

} // namespace

qint64 LineSum::gross() const
{
    return divideRounded(price * quantity, 1000);
}

bool LineSum::isDiscountDivisible() const
{
    const qint64 left = price * quantity - discount * 1000;
    const qint64 unit = left / quantity;
    const qint64 remainder = left % quantity;
    const auto fits
        = [this](qint64 unitPrice) { return divideRounded(unitPrice * quantity, 1000) == amount(); };
    // At half a kopeck the driver's rounding of a double may go either way: both must do.
    if (remainder * 2 == quantity)
        return fits(unit) && fits(unit + 1);
    return fits(remainder * 2 > quantity ? unit + 1 : unit);
}

std::optional<qint64> LineSum::nearestDiscount(int step) const
{
    LineSum other = *this;
    const qint64 limit = gross();
    while ((other.discount += step) >= 0 && other.discount <= limit) {
        if (other.isDiscountDivisible())
            return other.discount;
    }
    return std::nullopt;
}

QList<LineSum> LineSum::split() const
{
    const qint64 units = quantity / 1000;
    const qint64 unitPrice = amount() / units;
    const qint64 dearer = amount() % units;
    const auto line = [this](qint64 count, qint64 priceWithDiscount) {
        return LineSum{price, count * 1000, count * (price - priceWithDiscount)};
    };
    if (dearer == 0)
        return {*this};
    return {line(dearer, unitPrice + 1), line(units - dearer, unitPrice)};
}

LineSum lineSumOf(const FrPosition& position)
{
    return {kopecksOf(position.getPrice()), qRound64(position.getCount() * 1000.0),
        kopecksOf(position.getDiscsum())};
}

} // namespace receipt
