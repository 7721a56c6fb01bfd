#pragma once

#include "protocol.h"

#include <QString>

#include <optional>

namespace receipt {

/// Over HEX all documents but a receipt have that many characters of the cashier's name: the driver cuts the
/// rest off.
constexpr int longestLoginName = 48;

/// What becomes of the name of a receipt's cashier where the receipt opens the shift; nothing when all of it
/// arrives. The receipt itself has it whole.
std::optional<QString> shiftCashierWarning(const QString& name, Protocol protocol);

} // namespace receipt
