#pragma once

#include "memory/memory.h"
#include "program/options.h"

/// Switching the register on: what its state says of it and what the options ask for must agree.
namespace power {

/// Opens the state that the options name, after keeping and restoring snapshots of it, and takes over the
/// register that it is of. Throws emulator::MemoryError.
std::unique_ptr<emulator::Memory> openMemory(Options& options);
/// Brings the register to where it was, and does what the options want done at the start.
void switchOn(emulator::Register& device, emulator::Memory* memory, const Options& options);

} // namespace power
