#pragma once

#include "frparameter.h"

#include <QList>
#include <QString>

class AbstractFrDriver;

namespace hw {
class AbstractRegisterParameters;
}

namespace frctl {

/// A setting by its name, and what is to be written there.
struct ParameterChange
{
    QString name;
    QString value;
    /// As the driver wants it.
    FrParameter parameter;
};

/// Writes the settings. Throws Refusal with the names of those that were refused: exactly that one over HEX;
/// over XML, where the register judges all at once, those that it can have been.
void writeParameters(AbstractFrDriver& driver, hw::AbstractRegisterParameters& source,
    const QList<ParameterChange>& changes, bool isHex);

/// Writes the driver's defaults. Throws Refusal with the name of the one that was refused.
void writeDefaults(AbstractFrDriver& driver, const hw::AbstractRegisterParameters& source, bool isHex);

} // namespace frctl
