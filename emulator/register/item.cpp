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

// Nothing is written for what the host did not tell.
void addUnlessUnknown(QJsonObject& entry, const QString& key, int code)
{
    if (code >= 0)
        entry[key] = code;
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
    addUnlessUnknown(entry, QStringLiteral("markingStatus"), markingStatus);
    addUnlessEmpty(entry, QStringLiteral("goodsCode"), goodsCode);
    addUnlessUnknown(entry, QStringLiteral("assignedStatus"), assignedStatus);
    addUnlessEmpty(entry, QStringLiteral("agent"), agent);
    addUnlessEmpty(entry, QStringLiteral("industry"), industry);
    addUnlessEmpty(entry, QStringLiteral("measure"), measure);
    if (discount != 0) {
        entry[QStringLiteral("fullPrice")] = moneyText(fullPrice);
        entry[QStringLiteral("discount")] = moneyText(discount);
    }
    return entry;
}

Money sumOf(const QList<Item>& items)
{
    return std::accumulate(
        items.cbegin(), items.cend(), Money{0}, [](Money sum, const Item& item) { return sum + item.sum(); });
}

} // namespace emulator
