#pragma once

#include "memory/memoryerror.h"

namespace emulator {

/// A state of another register.
class ForeignState : public MemoryError
{
public:
    using MemoryError::MemoryError;
};

} // namespace emulator
