#pragma once

#include "checktype.h"

namespace receipt {

class JsonFields;

/// The type of a receipt, which must be one that the driver issues. A purchase or a correction would reach
/// the register as a sale over XML, so it must not get as far as the driver.
hw::fr::CheckType receiptType(JsonFields& fields);

} // namespace receipt
