#pragma once

#include "namedvalue.h"

#include <QString>

#include <span>

/// What the names in the JSON stand for, a table a field.
namespace receipt::names {

/// The name that a table has for the number, which itself stands for one without a name.
QString nameOf(std::span<const NamedValue> values, int value);

/// hw::fr::CheckType; what the driver issues.
std::span<const NamedValue> receiptTypes();
/// Tag 1055.
std::span<const NamedValue> taxSystems();
/// Tag 1199.
std::span<const NamedValue> taxRates();
/// Tag 1214.
std::span<const NamedValue> paymentMethods();
/// Tag 1212.
std::span<const NamedValue> paymentObjects();
/// Tag 2108.
std::span<const NamedValue> measureUnits();
/// The Russian name of a measure unit; empty for a code without one.
QString measureName(int code);
/// FrPayment::kind.
std::span<const NamedValue> paymentKinds();
/// ExciseMarkType.
std::span<const NamedValue> markTypes();
/// Bits of tag 1222.
std::span<const NamedValue> agentTypes();
/// Barcode::Type.
std::span<const NamedValue> barcodeTypes();

} // namespace receipt::names
