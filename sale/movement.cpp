#include "movement.h"

#include "paymentsjson.h"
#include "receipt.h"

namespace sale {

namespace {

const QString movedKindKey = QStringLiteral("kind");
const QString movedPaymentsKey = QStringLiteral("payments");
const QString movedCashKey = QStringLiteral("cash");

DocumentKind receiptKind(const receipt::Receipt& receipt)
{
    switch (receipt.document.getDocumentType()) {
    case hw::fr::CheckSale:
        return DocumentKind::Sale;
    case hw::fr::CheckSaleReturn:
        return DocumentKind::SaleReturn;
    default:
        return DocumentKind::OtherReceipt;
    }
}

} // namespace

QJsonObject paymentsJson(const PaymentSums& payments)
{
    QJsonObject json;
    for (auto payment = payments.cbegin(); payment != payments.cend(); ++payment) {
        if (payment.value() != 0)
            json.insert(QString::number(payment.key()), payment.value());
    }
    return json;
}

PaymentSums paymentsOf(const QJsonObject& json)
{
    PaymentSums payments;
    for (auto payment = json.begin(); payment != json.end(); ++payment)
        payments.insert(payment.key().toInt(), payment.value().toInteger());
    return payments;
}

QJsonObject Movement::toJson() const
{
    QJsonObject json{{movedKindKey, documentKindName(kind)}};
    if (!payments.isEmpty())
        json.insert(movedPaymentsKey, paymentsJson(payments));
    if (isCash(kind))
        json.insert(movedCashKey, cash);
    return json;
}

Movement Movement::fromJson(const QJsonObject& json)
{
    return {documentKindOf(json.value(movedKindKey).toString()),
        paymentsOf(json.value(movedPaymentsKey).toObject()), json.value(movedCashKey).toInteger()};
}

Movement movementOf(const receipt::Receipt& receipt)
{
    Movement movement{receiptKind(receipt)};
    for (const FrPayment& payment : receipt.payments)
        movement.payments[payment.kind] += qRound64(payment.getSum() * 100);
    // Cash comes back as change, and stands for what is missing.
    movement.payments[0] += receipt.total - receipt.paid;
    return movement;
}

} // namespace sale
