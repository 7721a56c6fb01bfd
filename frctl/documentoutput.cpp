#include "documentoutput.h"

#include "markjudgement.h"
#include "money.h"
#include "showntext.h"

#include <QJsonArray>

namespace frctl {

namespace {

using receipt::moneyText;
using receipt::roubles;

/// As the register gets it.
double rounded(double value, int decimals)
{
    return QString::number(value, 'f', decimals).toDouble();
}

QJsonArray marksJson(const QList<sale::MarkCheck>& marks)
{
    QJsonArray json;
    for (const sale::MarkCheck& mark : marks)
        json.append(QJsonObject{{QStringLiteral("markingCode"), mark.markingCode},
            {QStringLiteral("result"), mark.result}, {QStringLiteral("path"), mark.path},
            {QStringLiteral("bits"), QJsonArray::fromStringList(sale::judgeMark(mark.result).bits)}});
    return json;
}

/// The positions as they were issued: a discount that does not divide may have made two of one.
QJsonArray itemsJson(const receipt::Receipt& receipt)
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
                {QStringLiteral("amount"), rounded(position.getPossumWithDisc(), 2)}});
    }
    return json;
}

QJsonObject receiptJson(const receipt::Receipt& receipt, const sale::IssueResult& result)
{
    QJsonObject json = documentJson(result.verdict);
    json.insert(QStringLiteral("total"), roubles(result.total));
    json.insert(QStringLiteral("paid"), roubles(result.paid));
    json.insert(QStringLiteral("change"), roubles(result.change));
    json.insert(QStringLiteral("items"), itemsJson(receipt));
    if (!result.fiscalData.isEmpty())
        json.insert(QStringLiteral("fiscalData"), result.fiscalData);
    if (!result.marks.isEmpty())
        json.insert(QStringLiteral("marks"), marksJson(result.marks));
    return json;
}

/// Over HEX the number is not asked for, and mostly not known.
QString numberText(const sale::Verdict& verdict)
{
    return verdict.number == 0 ? QString() : QStringLiteral(", document %1").arg(verdict.number);
}

QString markLine(const sale::MarkCheck& mark)
{
    return QStringLiteral("marking code %1: %2").arg(receipt::shownText(mark.markingCode)).arg(mark.result);
}

} // namespace

QJsonObject documentJson(const sale::Verdict& verdict)
{
    QJsonObject json;
    if (verdict.outcome != sale::Outcome::None)
        json.insert(QStringLiteral("outcome"), sale::outcomeName(verdict.outcome));
    if (verdict.number != 0) {
        json.insert(QStringLiteral("documentNumber"), static_cast<qint64>(verdict.number));
        json.insert(QStringLiteral("documentNumberRead"), verdict.isNumberRead);
    }
    if (verdict.outcome == sale::Outcome::Issued && verdict.times > 1)
        json.insert(QStringLiteral("times"), verdict.times);
    return json;
}

Output receiptOutput(const receipt::Receipt& receipt, const sale::IssueResult& result)
{
    Output output;
    output.lines = {QStringLiteral("receipt issued: total %1, paid %2, change %3")
                        .arg(moneyText(result.total), moneyText(result.paid), moneyText(result.change))
        + numberText(result.verdict)};
    for (const sale::MarkCheck& mark : result.marks)
        output.lines.append(markLine(mark));
    output.json = receiptJson(receipt, result);
    output.verdict = result.verdict;
    return output;
}

} // namespace frctl
