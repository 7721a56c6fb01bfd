#include "documentoutput.h"

#include "money.h"

#include <QJsonArray>

namespace frctl {

namespace {

using receipt::moneyText;
using receipt::roubles;

QJsonArray marksJson(const QList<sale::MarkCheck>& marks)
{
    QJsonArray json;
    for (const sale::MarkCheck& mark : marks)
        json.append(QJsonObject{
            {QStringLiteral("markingCode"), mark.markingCode}, {QStringLiteral("result"), mark.result}});
    return json;
}

QJsonObject receiptJson(const sale::IssueResult& result)
{
    QJsonObject json = documentJson(result.verdict);
    json.insert(QStringLiteral("total"), roubles(result.total));
    json.insert(QStringLiteral("paid"), roubles(result.paid));
    json.insert(QStringLiteral("change"), roubles(result.change));
    if (!result.fiscalData.isEmpty())
        json.insert(QStringLiteral("fiscalData"), result.fiscalData);
    if (!result.marks.isEmpty())
        json.insert(QStringLiteral("marks"), marksJson(result.marks));
    return json;
}

/// The group separator is no character for a terminal.
QString markLine(const sale::MarkCheck& mark)
{
    return QStringLiteral("marking code %1: %2")
        .arg(QString(mark.markingCode).replace(QChar(0x1D), QStringLiteral("<GS>")))
        .arg(mark.result);
}

} // namespace

QJsonObject documentJson(const sale::Verdict& verdict)
{
    QJsonObject json;
    if (verdict.outcome != sale::Outcome::None)
        json.insert(QStringLiteral("outcome"), sale::outcomeName(verdict.outcome));
    if (verdict.number != 0)
        json.insert(QStringLiteral("documentNumber"), static_cast<qint64>(verdict.number));
    return json;
}

Output receiptOutput(const sale::IssueResult& result)
{
    Output output;
    output.lines = {QStringLiteral("receipt issued: total %1, paid %2, change %3, document %4")
                        .arg(moneyText(result.total), moneyText(result.paid), moneyText(result.change),
                            QString::number(result.verdict.number))};
    for (const sale::MarkCheck& mark : result.marks)
        output.lines.append(markLine(mark));
    output.json = receiptJson(result);
    output.verdict = result.verdict;
    return output;
}

} // namespace frctl
