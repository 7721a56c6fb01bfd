#pragma once

#include "receipt.h"
#include "receipterror.h"

#include <QJsonObject>

namespace receipt {

/// Builds a receipt from its JSON, as far as it can be read. All that is malformed is appended to the errors,
/// with its path, and so are fields that are not known; what hangs on it is not judged.
/// Positions whose discount does not divide into whole kopecks per unit become two where that is allowed.
Receipt readReceipt(const QJsonObject& json, bool isSplitAllowed, QList<ReceiptError>& errors);
/// The same. Throws a ReceiptError that has all mistakes.
Receipt receiptFromJson(const QJsonObject& json, bool isSplitAllowed = false);
/// The same from the text of a file.
Receipt receiptFromText(const QByteArray& text);

} // namespace receipt
