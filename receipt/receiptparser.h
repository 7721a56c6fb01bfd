#pragma once

#include "receipt.h"

#include <QJsonObject>

namespace receipt {

/// Builds a receipt from its JSON. Everything that can be told without a register is checked; the first
/// mistake leaves as a ReceiptError with its path, and so do fields that are not known.
/// Positions whose discount does not divide into whole kopecks per unit become two where that is allowed.
Receipt receiptFromJson(const QJsonObject& json, bool isSplitAllowed = false);
/// The same from the text of a file.
Receipt receiptFromText(const QByteArray& text);

} // namespace receipt
