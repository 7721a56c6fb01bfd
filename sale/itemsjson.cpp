#include "itemsjson.h"

#include "markjudgement.h"
#include "receipt.h"

#include <QJsonObject>

#include <algorithm>

namespace sale {

namespace {

/// As the register gets it.
double rounded(double value, int decimals)
{
    return QString::number(value, 'f', decimals).toDouble();
}

QJsonValue markJson(const receipt::ReceiptItem& item, const QList<MarkCheck>& marks)
{
    const QString code = item.position.getMarkingCode();
    const auto mark = std::find_if(
        marks.cbegin(), marks.cend(), [&code](const MarkCheck& check) { return check.markingCode == code; });
    if (mark == marks.cend())
        return {};
    return QJsonObject{{QStringLiteral("code"), code}, {QStringLiteral("result"), mark->result},
        {QStringLiteral("bits"), QJsonArray::fromStringList(judgeMark(mark->result).bits)}};
}

} // namespace

QJsonArray itemsJson(const receipt::Receipt& receipt, const QList<MarkCheck>& marks)
{
    QJsonArray json;
    for (const receipt::ReceiptItem& item : receipt.items) {
        if (item.kind != receipt::ReceiptItem::Position)
            continue;
        const FrPosition& position = item.position;
        json.append(
            QJsonObject{{QStringLiteral("path"), item.path}, {QStringLiteral("name"), position.getName()},
                {QStringLiteral("price"), rounded(position.getPriceWithDisc(), 2)},
                {QStringLiteral("quantity"), rounded(position.getCount(), 3)},
                {QStringLiteral("amount"), rounded(position.getPossumWithDisc(), 2)},
                {QStringLiteral("mark"), markJson(item, marks)}});
    }
    return json;
}

QJsonArray markChecksJson(const QList<MarkCheck>& marks)
{
    QJsonArray json;
    for (const MarkCheck& mark : marks)
        json.append(
            QJsonObject{{QStringLiteral("code"), mark.markingCode}, {QStringLiteral("result"), mark.result}});
    return json;
}

QList<MarkCheck> markChecksOf(const QJsonArray& json)
{
    QList<MarkCheck> marks;
    for (const QJsonValue mark : json)
        marks.append({.markingCode = mark[QStringLiteral("code")].toString(),
            .result = mark[QStringLiteral("result")].toInt()});
    return marks;
}

} // namespace sale
