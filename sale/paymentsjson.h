#pragma once

#include "paymentsums.h"

#include <QJsonObject>

namespace sale {

/// {"0": 9100, "1": 500}: kopecks by the kind of payment, without those that are zero.
QJsonObject paymentsJson(const PaymentSums& payments);
PaymentSums paymentsOf(const QJsonObject& json);

} // namespace sale
