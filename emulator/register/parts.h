#pragma once

#include "register/deviceclock.h"
#include "register/fiscaldrive.h"
#include "register/identity.h"
#include "register/journal.h"
#include "register/parameterstore.h"
#include "register/refusals.h"
#include "register/settings.h"
#include "register/state.h"
#include "register/surroundings.h"
#include "register/tape.h"

namespace emulator {

/// What a register is made of. The classes that carry out a host's commands all work on the same parts.
struct Parts
{
    Parts(const Clock& source, const Identity& itsIdentity);

    /// The numbered settings as they leave the factory.
    ParameterStore factoryParameters() const;
    /// A drive that was put in just now.
    FiscalDrive newDrive(const QString& number) const;

    const Identity identity;
    DeviceClock clock;
    ParameterStore parameters;
    Settings settings;
    State state;
    Surroundings around;
    FiscalDrive drive;
    Tape tape;
    Journal journal;
    Refusals refusals;
};

} // namespace emulator
