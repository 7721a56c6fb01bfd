#pragma once

#include "register/markverdict.h"

#include <QList>

namespace emulator {

/// What is around the register and is no part of what it remembers.
struct Surroundings
{
    bool isPowered = true;
    /// The first one whose pattern fits a code tells.
    QList<MarkVerdict> markVerdicts;
};

} // namespace emulator
