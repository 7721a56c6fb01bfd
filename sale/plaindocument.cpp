#include "plaindocument.h"

#include "documentrequest.h"
#include "placeinnames.h"
#include "saletr.h"

#include "money.h"
#include "receipterror.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <limits>

namespace sale {

namespace {

// In the order of the kinds.
constexpr std::array plainNames{
    "openShift", "zReport", "xReport", "accountingReport", "cashIn", "cashOut", "text", "copy"};

qint64 sumOf(const QJsonObject& json)
{
    const QString name = QStringLiteral("sum");
    const QJsonValue given = json.value(name);
    const std::optional<qint64> kopecks = receipt::fixedPoint(given.toDouble(), 2);
    if (!given.isDouble() || !kopecks || *kopecks <= 0)
        throw receipt::ReceiptError(name, tr("must be a sum above zero in whole kopecks"), given);
    return *kopecks;
}

QStringList linesOf(const QJsonObject& json)
{
    const QString name = QStringLiteral("lines");
    const QJsonArray given = json.value(name).toArray();
    QStringList lines;
    for (const auto& line : given) {
        if (line.isString())
            lines.append(line.toString());
    }
    if (lines.isEmpty() || lines.size() != given.size())
        throw receipt::ReceiptError(name, tr("must be an array of texts"));
    return lines;
}

quint32 numberOf(const QJsonObject& json)
{
    const QString name = QStringLiteral("documentNumber");
    const QJsonValue given = json.value(name);
    if (given.isUndefined() || given.isNull())
        return 0;
    const std::optional<qint64> number = receipt::fixedPoint(given.toDouble(), 0);
    if (!given.isDouble() || !number || *number <= 0 || *number > std::numeric_limits<quint32>::max())
        throw receipt::ReceiptError(name, tr("must be the number of a document"), given);
    return static_cast<quint32>(*number);
}

} // namespace

std::optional<PlainDocument::Kind> plainKindOf(const QString& name)
{
    const std::optional<size_t> place = placeIn(plainNames, name);
    return place ? std::optional(static_cast<PlainDocument::Kind>(*place)) : std::nullopt;
}

std::optional<FrUser> plainCashier(const DocumentRequest& request)
{
    const QJsonObject json = QJsonDocument::fromJson(request.body).object();
    const QJsonObject person = json.value(QStringLiteral("operator")).toObject();
    const QString name = person.value(QStringLiteral("name")).toString();
    if (name.isEmpty())
        return std::nullopt;
    return FrUser{name, {}, person.value(QStringLiteral("vatin")).toString()};
}

PlainDocument plainDocumentOf(const DocumentRequest& request)
{
    const std::optional<PlainDocument::Kind> kind = plainKindOf(request.kind);
    if (!kind)
        throw receipt::ReceiptError(
            QStringLiteral("type"), tr("is no document that is made out of a queue"), request.kind);
    PlainDocument document{*kind};
    const QJsonObject json = QJsonDocument::fromJson(request.body).object();
    if (document.kind == PlainDocument::CashIn || document.kind == PlainDocument::CashOut)
        document.kopecks = sumOf(json);
    if (document.kind == PlainDocument::Text)
        document.lines = linesOf(json);
    if (document.kind == PlainDocument::Copy)
        document.documentNumber = numberOf(json);
    return document;
}

} // namespace sale
