#pragma once

#include "frparameter.h"
#include "registerparameter.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <optional>

namespace hw {

/// The settings of a register as data, beside the printout of AbstractFrDriver::getParametersDescription. A
/// device object may offer it; a host asks by qobject_cast and does without where the answer is null.
///
/// The interface stands in its header alone, so that a plugin that offers it needs nothing more of its host.
class AbstractRegisterParameters
{
public:
    virtual ~AbstractRegisterParameters() = default;

    /// All that the driver knows, without values, in the order of the device; does not reach the device.
    /// Empty before the device object's init.
    virtual QList<fr::RegisterParameter> knownParameters() const = 0;

    /// The same with values. With names, only those of them that the driver knows are read, where the
    /// protocol can read single ones: HEX takes an exchange for each, XML one for all. A setting that the
    /// device refuses has an empty value over HEX and is left out over XML, where a setting in the answer
    /// that the driver does not know is told, too. Throws what any operation of the driver throws.
    virtual QList<fr::RegisterParameter> readParameters(const QStringList& names) = 0;

    /// What AbstractFrDriver::setParams wants for writing the value under that name; nothing when the name is
    /// none on this protocol. Over HEX a number that is not known can be written all the same, and "20" is
    /// "20.0".
    virtual std::optional<FrParameter> assignment(const QString& name, const QString& value) const = 0;
};

} // namespace hw

#define HW_ABSTRACT_REGISTER_PARAMETERS_IID "frhost.AbstractRegisterParameters/1.0"
Q_DECLARE_INTERFACE(hw::AbstractRegisterParameters, HW_ABSTRACT_REGISTER_PARAMETERS_IID)
