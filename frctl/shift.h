#pragma once

class AbstractFrDriver;

namespace frctl {

/// Whether the shift is open, over either protocol.
bool isShiftOpen(AbstractFrDriver& driver);

} // namespace frctl
