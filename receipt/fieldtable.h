#pragma once

#include "fieldrule.h"

#include <span>

namespace receipt {

/// Every field that a receipt may have, in the order in which the guide tells them. Objects stand there by
/// their fields, arrays of plain values by their name.
std::span<const FieldRule> fieldRules();
/// The rule of a field with or without its places in arrays ("items[2].name"); null when there is none.
const FieldRule* fieldRule(const QString& path);

/// Whether the register prints barcodes of the type (Barcode::Type) when it is spoken to so.
bool isBarcodePrinted(int type, Protocol protocol);

} // namespace receipt
