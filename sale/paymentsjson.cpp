#include "paymentsjson.h"

namespace sale {

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

} // namespace sale
