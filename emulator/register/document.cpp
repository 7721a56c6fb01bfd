#include "register/document.h"

#include <algorithm>
#include <numeric>

namespace emulator {

Money sumOf(const Payments& payments)
{
    return std::accumulate(payments.cbegin(), payments.cend(), Money{0});
}

QJsonObject Item::toJson() const
{
    QJsonObject entry{{QStringLiteral("name"), name}, {QStringLiteral("price"), moneyText(price)},
        {QStringLiteral("quantity"), quantityText(quantity)}, {QStringLiteral("sum"), moneyText(sum())},
        {QStringLiteral("tax"), tax}, {QStringLiteral("paymentMethod"), paymentMethod},
        {QStringLiteral("paymentObject"), paymentObject}, {QStringLiteral("unit"), unit}};
    const auto addText = [&entry](const QString& key, const QString& value) {
        if (!value.isEmpty())
            entry[key] = value;
    };
    addText(QStringLiteral("barcode"), barcode);
    addText(QStringLiteral("country"), country);
    addText(QStringLiteral("declaration"), declaration);
    addText(QStringLiteral("markingCode"), QString::fromUtf8(markingCode));
    if (markingStatus >= 0)
        entry[QStringLiteral("markingStatus")] = markingStatus;
    if (!agent.isEmpty())
        entry[QStringLiteral("agent")] = agent;
    if (!industry.isEmpty())
        entry[QStringLiteral("industry")] = industry;
    return entry;
}

Money Document::total() const
{
    return std::accumulate(
        items.cbegin(), items.cend(), Money{0}, [](Money sum, const Item& item) { return sum + item.sum(); });
}

Money Document::change() const
{
    return std::max<Money>(0, sumOf(payments) - total());
}

} // namespace emulator
