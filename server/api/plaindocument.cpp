#include "api/plaindocument.h"

#include "jsonfields.h"
#include "plaintext.h"

#include <QJsonArray>

#include <limits>

namespace frserver {

namespace {

using receipt::JsonFields;
using receipt::ReceiptError;

void readNothing(JsonFields&) { }

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

struct PlainType
{
    const char* name;
    void (*read)(JsonFields& fields);
};

constexpr PlainType types[] = {
    {"openShift", readNothing},
    {"zReport", readNothing},
    {"xReport", readNothing},
    {"accountingReport", readNothing},
    {"cashIn", readCash},
    {"cashOut", readCash},
    {"text", readNothing},
    {"copy", readCopy},
};

/// Blank lines are lines, too.
void judgeLines(const QJsonValue& value, QList<ReceiptError>& errors)
{
    constexpr qsizetype most = 1000;
    constexpr qsizetype longest = 1000;
    const QString path = QStringLiteral("lines");
    const QJsonArray lines = value.toArray();
    if (lines.isEmpty() || lines.size() > most)
        errors.append(ReceiptError(path, QStringLiteral("must be an array of 1 to %1 texts").arg(most)));
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

const QStringList& plainTypes()
{
    static const QStringList names = [] {
        QStringList list;
        for (const PlainType& type : types)
            list.append(QLatin1String(type.name));
        return list;
    }();
    return names;
}

QList<ReceiptError> plainErrors(const QJsonObject& json)
{
    QList<ReceiptError> errors;
    const QString name = json.value(QStringLiteral("type")).toString();
    QJsonObject details = json;
    details.remove(QStringLiteral("type"));
    if (name == QStringLiteral("text"))
        judgeLines(details.take(QStringLiteral("lines")), errors);
    JsonFields fields(details, {}, errors);
    for (const PlainType& type : types) {
        if (name == QLatin1String(type.name))
            type.read(fields);
    }
    fields.finish();
    return errors;
}

} // namespace frserver
