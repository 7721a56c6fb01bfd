#pragma once

#include "drivemark.h"

namespace sale {

/// A mark of the register that is known before it is asked, since nobody else works it.
struct KnownMark
{
    /// After the last document of ours.
    DriveMark mark;
    /// It is of this connection: the register cannot have been changed for another since.
    bool isOfThisConnection = false;
};

} // namespace sale
