#pragma once

namespace frctl {

/// From now on Ctrl-C and a request to end leave the work at the next wait for the register. The second one
/// ends the program on the spot.
void catchInterruptions();
/// Throws Interrupted when one has come.
void throwIfInterrupted();

} // namespace frctl
