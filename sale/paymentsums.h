#pragma once

#include <QMap>
#include <QtGlobal>

namespace sale {

/// Kopecks by the kind of payment, which is numbered as in FrPayment. A kind that is missing is zero.
using PaymentSums = QMap<int, qint64>;

} // namespace sale
