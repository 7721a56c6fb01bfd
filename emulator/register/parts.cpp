#include "register/parts.h"

#include "register/parametertable.h"
#include "register/recording.h"

namespace emulator {

Parts::Parts(const Clock& source, const Identity& itsIdentity)
    : identity(itsIdentity)
    , clock(source)
    , parameters(factoryParameters())
    , settings(identity.width)
    , drive(newDrive(identity.driveNumber))
{
}

ParameterStore Parts::factoryParameters() const
{
    ParameterStore made;
    made.set(parameter::serialNumber, 0, identity.serialNumber);
    return made;
}

FiscalDrive Parts::newDrive(const QString& number) const
{
    const FactoryDocuments documents = recording::factoryDocuments(identity, state.registration, clock.now());
    return {number, clock.now(), documents, identity.driveLife};
}

} // namespace emulator
