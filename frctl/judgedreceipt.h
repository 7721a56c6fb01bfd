#pragma once

#include "options.h"
#include "receiptcheck.h"

namespace frctl {

/// A receipt as it would be issued with these options.
struct JudgedReceipt
{
    /// Without what is said of a cashier in whose place the command line puts another, and with what is said
    /// of that one.
    receipt::CheckedReceipt checked;
    /// Without a name when neither the receipt nor the command line has one.
    FrUser cashier;
};

/// Judges the text of a file by all that needs neither register nor journal. Throws ReceiptError.
JudgedReceipt judgedReceipt(const QByteArray& text, const Options& options, receipt::Protocol protocol);
/// Throws UsageError where nobody is named.
FrUser receiptCashier(const Options& options, const JudgedReceipt& judged);

} // namespace frctl
