#pragma once

namespace frctl {

/// From now on Ctrl-C, a hang-up and a request to end leave the work at the next wait for the register. The
/// second one ends the program on the spot. A pipe that nobody reads any more ends nothing, and what was
/// ignored when the program was started stays ignored.
void catchInterruptions();
/// Throws Interrupted when one has come, and not again.
void throwIfInterrupted();
/// True once one has come.
bool wasInterrupted();

} // namespace frctl
