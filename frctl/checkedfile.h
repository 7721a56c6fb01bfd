#pragma once

#include "options.h"
#include "receiptcheck.h"

#include <QByteArray>

namespace frctl {

/// The receipt of a file as a command sells it: the cashier is in it, that of the command line before the
/// file's own, and of one who was replaced nothing is said. Throws ReceiptError.
receipt::CheckedReceipt checkedFile(const Options& options, const QByteArray& text);
/// Throws UsageError for a receipt that nobody sells.
void requireCashier(const Options& options, const receipt::Receipt& receipt);

} // namespace frctl
