#pragma once

#include "line/fault.h"
#include "line/language.h"

#include <QByteArray>

namespace emulator {

/// Who says which fault an exchange suffers, ahead of the plan.
class FaultSource
{
public:
    FaultSource() = default;
    virtual ~FaultSource() = default;
    FaultSource(const FaultSource&) = delete;
    FaultSource& operator=(const FaultSource&) = delete;

    /// Is asked once for each exchange, before the register acts; they are counted for each protocol, from 1.
    /// No fault leaves it to the plan.
    virtual Fault choose(const QByteArray& request, Language language, int exchange) = 0;
};

} // namespace emulator
