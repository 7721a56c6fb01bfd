#pragma once

class AbstractFrDriver;

namespace sale {

/// Whether the shift is open, over either protocol. Throws the driver's exceptions.
bool isShiftOpen(AbstractFrDriver& driver);

} // namespace sale
