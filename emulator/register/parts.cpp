#include "register/parts.h"

#include "register/parametertable.h"
#include "register/recording.h"

namespace emulator {

Parts::Parts(const Clock& source, const Identity& itsIdentity)
    : identity(itsIdentity)
    , clock(source)
    , parameters(factoryParameters())
    , settings(identity.width)
    , drive(identity.driveNumber, clock.now(),
          recording::factoryDocuments(identity, state.registration, clock.now()), identity.driveLife)
{
}

ParameterStore Parts::factoryParameters() const
{
    ParameterStore made;
    made.set(parameter::serialNumber, 0, identity.serialNumber);
    return made;
}

} // namespace emulator
