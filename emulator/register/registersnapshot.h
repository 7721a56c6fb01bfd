#pragma once

#include "register/fiscaldrive.h"
#include "register/registermemory.h"

namespace emulator {

/// A register as it was at some time, with its fiscal drive.
struct RegisterSnapshot
{
    RegisterMemory memory;
    FiscalDrive drive;
};

} // namespace emulator
