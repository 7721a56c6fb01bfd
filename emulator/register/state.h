#pragma once

#include "register/drawer.h"
#include "register/markingtable.h"
#include "register/opendocument.h"
#include "register/paper.h"
#include "register/registration.h"
#include "register/shift.h"

namespace emulator {

/// What the register remembers beside its settings and its fiscal drive: values, and no judgement.
struct State
{
    /// A host has agreed with the register on the time since power came on.
    bool isStarted = false;
    Paper paper;
    /// With the OFD in reach the queue stays empty.
    bool isOperatorReachable = false;
    Registration registration;
    Shift shift;
    Drawer drawer;
    OpenDocument open;
    MarkingTable marking;
    /// A Windows bitmap, or nothing.
    QByteArray logo;
};

} // namespace emulator
