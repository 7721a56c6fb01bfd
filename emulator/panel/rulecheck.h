#pragma once

#include "line/faultrule.h"
#include "panel/members.h"

namespace emulator::panel::rulecheck {

/// A rule that can never hit is a mistake: throws the problem (400) of the member that keeps it from it.
void check(const Members& members, const FaultRule& rule);

} // namespace emulator::panel::rulecheck
