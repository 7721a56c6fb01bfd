#pragma once

#include "paymentsums.h"

namespace sale {

PaymentSums withoutZeros(const PaymentSums& sums);
/// Without those that are equal.
PaymentSums difference(const PaymentSums& sums, const PaymentSums& less);

/// Whether the sums may have been read so although those of the truth stood in the register: one byte of the
/// answer was changed, lost or doubled, which an answer without a check value does not show. Sums that cannot
/// be found in such an answer any more read as zero.
bool isMisreading(const PaymentSums& read, const PaymentSums& truth);

} // namespace sale
