#include "returncompletion.h"

#include "soldline.h"
#include "storeddocument.h"

#include "jsontext.h"
#include "linesum.h"
#include "markingcode.h"
#include "marksyntax.h"
#include "money.h"
#include "receipterror.h"
#include "receiptparser.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace sale {

namespace {

using receipt::Receipt;
using receipt::ReceiptItem;

const QString itemsKey = QStringLiteral("items");
const QString priceKey = QStringLiteral("price");
const QString amountKey = QStringLiteral("amount");
const QString discountKey = QStringLiteral("infoDiscountAmount");
const QString markKey = QStringLiteral("markingCode");

QString givenMark(const QJsonObject& item)
{
    const QJsonValue mark = item.value(markKey);
    const QString text
        = mark.isObject() ? mark.toObject().value(QStringLiteral("mark")).toString() : mark.toString();
    return text.isEmpty() ? QString() : receipt::markIdentity(receipt::markFromText(text));
}

SoldLine meantLine(const QJsonObject& item)
{
    const QString mark = givenMark(item);
    return mark.isEmpty() ? SoldLine{item.value(QStringLiteral("name")).toString(), {}} : SoldLine{{}, mark};
}

std::optional<qint64> givenPrice(const QJsonObject& item)
{
    return item.contains(priceKey) ? receipt::fixedPoint(item.value(priceKey).toDouble(), 2) : std::nullopt;
}

/// That of the price given, if there is one; nothing where the price alone tells them apart, and is missing.
const ReceiptItem* meantItem(const QJsonObject& item, const Receipt& sold)
{
    const SoldLine meant = meantLine(item);
    const std::optional<qint64> price = givenPrice(item);
    const ReceiptItem* found = nullptr;
    for (const ReceiptItem& one : sold.items) {
        if (one.kind != ReceiptItem::Position || !soldLineOf(one).isOfSameGoods(meant))
            continue;
        const SoldLine line = soldLineOf(one);
        if (price == line.price)
            return &one;
        if (found != nullptr && !price && soldLineOf(*found) != line)
            return nullptr;
        if (found == nullptr)
            found = &one;
    }
    return found;
}

/// Where it stood in the sale.
QJsonObject itemAt(const QJsonArray& items, const QString& path)
{
    for (qsizetype place = 0; place < items.size(); ++place) {
        if (path == QStringLiteral("items[%1]").arg(place))
            return items.at(place).toObject();
    }
    return {};
}

void addSum(QJsonObject& item, qint64 soldPrice)
{
    if (!item.contains(priceKey))
        item.insert(priceKey, receipt::roubles(soldPrice));
    const auto price = receipt::fixedPoint(item.value(priceKey).toDouble(), 2);
    const auto quantity = receipt::fixedPoint(item.value(QStringLiteral("quantity")).toDouble(), 3);
    // What is wrong with them is told by whoever reads the receipt.
    if (price && quantity && !item.contains(amountKey) && !item.contains(discountKey))
        item.insert(amountKey, receipt::roubles(receipt::LineSum{*price, *quantity}.gross()));
}

QJsonObject completed(QJsonObject item, const Receipt& sold, const QJsonArray& soldItems)
{
    const ReceiptItem* const meant = meantItem(item, sold);
    if (meant == nullptr)
        return item;
    const QJsonObject soldItem = itemAt(soldItems, meant->path);
    for (const char* const name : {"name", "tax", "measurementUnit", "paymentObject"}) {
        const QString key = QString::fromLatin1(name);
        if (!item.contains(key) && soldItem.contains(key))
            item.insert(key, soldItem.value(key));
    }
    if (!item.contains(discountKey))
        addSum(item, soldLineOf(*meant).price);
    return item;
}

} // namespace

std::optional<Receipt> keptReceipt(const QByteArray& body)
{
    try {
        return receipt::receiptFromJson(receipt::jsonFromText(body), true);
    } catch (const receipt::ReceiptError&) {
        return std::nullopt;
    }
}

QByteArray completedReturn(const QByteArray& body, const StoredDocument& sale)
{
    const std::optional<Receipt> sold = keptReceipt(sale.request.body);
    QJsonObject json = QJsonDocument::fromJson(body).object();
    if (!sold || json.isEmpty())
        return body;
    const QJsonArray soldItems
        = QJsonDocument::fromJson(sale.request.body).object().value(itemsKey).toArray();
    QJsonArray items;
    const QJsonArray given = json.value(itemsKey).toArray();
    for (const auto& item : given)
        items.append(
            item.isObject() ? QJsonValue(completed(item.toObject(), *sold, soldItems)) : QJsonValue(item));
    if (!items.isEmpty())
        json.insert(itemsKey, items);
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

} // namespace sale
