#include "register/item.h"

#include <numeric>

namespace emulator {

namespace {

void addUnlessEmpty(QJsonObject& entry, const QString& key, const QString& value)
{
    if (!value.isEmpty())
        entry[key] = value;
}

void addUnlessEmpty(QJsonObject& entry, const QString& key, const QJsonObject& value)
{
    if (!value.isEmpty())
        entry[key] = value;
}

} // namespace

QJsonObject Item::toJson() const
{
    QJsonObject entry{{QStringLiteral("name"), name}, {QStringLiteral("price"), moneyText(price)},
        {QStringLiteral("quantity"), quantityText(quantity)}, {QStringLiteral("sum"), moneyText(sum())},
        {QStringLiteral("tax"), tax}, {QStringLiteral("paymentMethod"), paymentMethod},
        {QStringLiteral("paymentObject"), paymentObject}, {QStringLiteral("unit"), unit}};
    addUnlessEmpty(entry, QStringLiteral("barcode"), barcode);
    addUnlessEmpty(entry, QStringLiteral("country"), country);
    addUnlessEmpty(entry, QStringLiteral("declaration"), declaration);
    addUnlessEmpty(entry, QStringLiteral("markingCode"), QString::fromUtf8(markingCode));
    if (markingStatus >= 0)
        entry[QStringLiteral("markingStatus")] = markingStatus;
    addUnlessEmpty(entry, QStringLiteral("agent"), agent);
    addUnlessEmpty(entry, QStringLiteral("industry"), industry);
    return entry;
}

Money sumOf(const QList<Item>& items)
{
    return std::accumulate(
        items.cbegin(), items.cend(), Money{0}, [](Money sum, const Item& item) { return sum + item.sum(); });
}

} // namespace emulator
