#pragma once

#include <QtGlobal>

namespace emulator {

/// Where the register gets its time from. All waiting of the emulator is expressed in this time, so that a
/// test can let hours pass in no time.
class Clock
{
public:
    virtual ~Clock() = default;
    /// Milliseconds since 1970, UTC.
    virtual qint64 milliseconds() const = 0;
};

} // namespace emulator
