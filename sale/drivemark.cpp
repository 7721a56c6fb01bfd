#include "drivemark.h"

#include "paymentsjson.h"

namespace sale {

namespace {

const QString driveKey = QStringLiteral("drive");
const QString lastDocumentKey = QStringLiteral("lastDocument");
const QString isNumberReadKey = QStringLiteral("lastDocumentRead");
const QString isShiftOpenKey = QStringLiteral("shiftOpen");
const QString shiftKey = QStringLiteral("shift");
const QString nextReceiptKey = QStringLiteral("nextReceipt");
const QString sumsKey = QStringLiteral("sums");
const QString areSumsReadKey = QStringLiteral("sumsRead");
const QString cashKey = QStringLiteral("cash");
const QString drawerKey = QStringLiteral("drawer");
const QString countKey = QStringLiteral("count");
const QString sumKey = QStringLiteral("sum");

void insert(QJsonObject& json, const QString& key, const std::optional<qint64>& value)
{
    if (value)
        json.insert(key, *value);
}

std::optional<qint64> integer(const QJsonObject& json, const QString& key)
{
    const QJsonValue value = json.value(key);
    return value.isDouble() ? std::optional(value.toInteger()) : std::nullopt;
}

QJsonObject sumsJson(const QMap<DocumentKind, PaymentSums>& sums)
{
    QJsonObject json;
    for (auto kind = sums.cbegin(); kind != sums.cend(); ++kind)
        json.insert(documentKindName(kind.key()), paymentsJson(kind.value()));
    return json;
}

QJsonObject cashJson(const QMap<DocumentKind, OperationCount>& cash)
{
    QJsonObject json;
    for (auto kind = cash.cbegin(); kind != cash.cend(); ++kind)
        json.insert(documentKindName(kind.key()),
            QJsonObject{{countKey, kind.value().count}, {sumKey, kind.value().sum}});
    return json;
}

QMap<DocumentKind, PaymentSums> sumsOf(const QJsonObject& json)
{
    QMap<DocumentKind, PaymentSums> sums;
    for (auto kind = json.begin(); kind != json.end(); ++kind)
        sums.insert(documentKindOf(kind.key()), paymentsOf(kind.value().toObject()));
    return sums;
}

QMap<DocumentKind, OperationCount> cashOf(const QJsonObject& json)
{
    QMap<DocumentKind, OperationCount> cash;
    for (auto kind = json.begin(); kind != json.end(); ++kind) {
        const QJsonObject count = kind.value().toObject();
        cash.insert(
            documentKindOf(kind.key()), {count.value(countKey).toInteger(), count.value(sumKey).toInteger()});
    }
    return cash;
}

} // namespace

QJsonObject DriveMark::toJson() const
{
    QJsonObject json;
    if (!drive.isEmpty())
        json.insert(driveKey, drive);
    if (lastDocument != 0) {
        json.insert(lastDocumentKey, qint64{lastDocument});
        json.insert(isNumberReadKey, isNumberRead);
    }
    if (isShiftOpen)
        json.insert(isShiftOpenKey, *isShiftOpen);
    insert(json, shiftKey, shift);
    insert(json, nextReceiptKey, nextReceipt);
    insert(json, drawerKey, drawer);
    if (!sums.isEmpty()) {
        json.insert(sumsKey, sumsJson(sums));
        json.insert(areSumsReadKey, areSumsRead);
    }
    if (!cash.isEmpty())
        json.insert(cashKey, cashJson(cash));
    return json;
}

DriveMark DriveMark::fromJson(const QJsonObject& json)
{
    DriveMark mark;
    mark.drive = json.value(driveKey).toString();
    mark.lastDocument = static_cast<quint32>(json.value(lastDocumentKey).toInteger());
    mark.isNumberRead = json.value(isNumberReadKey).toBool(true);
    if (json.contains(isShiftOpenKey))
        mark.isShiftOpen = json.value(isShiftOpenKey).toBool();
    mark.shift = integer(json, shiftKey);
    mark.nextReceipt = integer(json, nextReceiptKey);
    mark.drawer = integer(json, drawerKey);
    mark.sums = sumsOf(json.value(sumsKey).toObject());
    mark.areSumsRead = json.value(areSumsReadKey).toBool(true);
    mark.cash = cashOf(json.value(cashKey).toObject());
    return mark;
}

} // namespace sale
