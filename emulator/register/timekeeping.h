#pragma once

#include "register/refusal.h"

class QDateTime;

namespace emulator {

struct Parts;

/// The clock as hosts see it, and the start with which a host and the register agree on the time.
class Timekeeping
{
public:
    explicit Timekeeping(Parts& parts)
        : m_parts(parts)
    {
    }

    /// Its years have two digits over HEX: 2000 to 2099.
    static bool isClockTime(const QDateTime& time);
    Refusal start(const QDateTime& hostTime);
    Refusal setTime(const QDateTime& time);

private:
    Parts& m_parts;
};

} // namespace emulator
