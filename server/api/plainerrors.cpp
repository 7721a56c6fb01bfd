#include "api/plainerrors.h"

#include "jsonfields.h"
#include "plaintext.h"

#include <QJsonArray>

#include <limits>

namespace frserver {

namespace {

using receipt::JsonFields;
using receipt::ReceiptError;
using sale::PlainDocument;

void readCash(JsonFields& fields)
{
    const qsizetype before = fields.errorCount();
    if (fields.kopecks(QStringLiteral("sum")) == 0 && fields.errorCount() == before)
        fields.fail(QStringLiteral("sum"), QStringLiteral("must be above zero"));
}

void readCopy(JsonFields& fields)
{
    const QString number = QStringLiteral("documentNumber");
    if (fields.has(number))
        fields.integer(number, 1, std::numeric_limits<int>::max());
}

void readCashier(JsonFields& fields)
{
    // Tag 1021.
    constexpr int longestName = 64;
    const QString cashier = QStringLiteral("operator");
    if (fields.has(cashier))
        fields.object(cashier, [](JsonFields& person) {
            person.text(QStringLiteral("name"), longestName);
            person.optionalInn(QStringLiteral("vatin"));
        });
}

/// Blank lines are lines, too.
void judgeLines(const QJsonValue& value, QList<ReceiptError>& errors)
{
    constexpr qsizetype mostLines = 1000;
    constexpr qsizetype longest = 1000;
    const QString path = QStringLiteral("lines");
    const QJsonArray lines = value.toArray();
    if (lines.isEmpty() || lines.size() > mostLines)
        errors.append(ReceiptError(path, QStringLiteral("must be an array of 1 to %1 texts").arg(mostLines)));
    for (qsizetype place = 0; place < lines.size(); ++place) {
        const QString linePath = QStringLiteral("lines[%1]").arg(place);
        const QString line = lines.at(place).toString();
        if (!lines.at(place).isString() || line.size() > longest)
            errors.append(ReceiptError(
                linePath, QStringLiteral("must be a text of at most %1 characters").arg(longest)));
        else if (const auto fault = receipt::textFault(line))
            errors.append(ReceiptError(linePath, *fault, line));
    }
}

} // namespace

QList<ReceiptError> plainErrors(PlainDocument::Kind kind, const QJsonObject& json)
{
    QList<ReceiptError> errors;
    QJsonObject details = json;
    details.remove(QStringLiteral("type"));
    if (kind == PlainDocument::Text)
        judgeLines(details.take(QStringLiteral("lines")), errors);
    JsonFields fields(details, {}, errors);
    readCashier(fields);
    if (kind == PlainDocument::CashIn || kind == PlainDocument::CashOut)
        readCash(fields);
    if (kind == PlainDocument::Copy)
        readCopy(fields);
    fields.finish();
    return errors;
}

} // namespace frserver
