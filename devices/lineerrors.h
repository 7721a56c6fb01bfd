#pragma once

namespace devices {

/// What the system has counted on a serial line: bytes that came with another speed or parity than the line
/// is set to.
struct LineErrors
{
    int framing = 0;
    int parity = 0;
};

} // namespace devices
