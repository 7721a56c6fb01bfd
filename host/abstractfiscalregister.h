#pragma once

#include "frhost_export.h"

#include <QObject>
#include <QSharedPointer>

class AbstractFrDriver;

namespace hw {

class AbstractPrinter;
class AbstractUpgradeManager;

/// What a host sees of a device object besides its properties.
class FRHOST_EXPORT AbstractFiscalRegister
{
public:
    virtual ~AbstractFiscalRegister();

    /// The driver through which all work is done; null before the device object's init slot has built it.
    virtual AbstractFrDriver* getLegacyDriver() = 0;
    /// A separate printer of the device; null when it has none.
    virtual AbstractPrinter* getPrinter() = 0;
    /// Number of the register, 0 to 19 in hosts' settings; nothing is checked here.
    virtual unsigned int getDeviceId() const = 0;
    virtual void setDeviceId(unsigned int deviceId) = 0;
    /// Whether a repeated connection tries other speeds. The first one does in any case.
    virtual bool isSpeedEnumerate() const = 0;
    virtual void setSpeedEnumerate(bool enumerate) = 0;
    /// Firmware upgrades; null when the device offers none.
    virtual QSharedPointer<AbstractUpgradeManager> getUpgradeManager() const = 0;
};

} // namespace hw

#define HW_ABSTRACT_FISCAL_REGISTER_IID "net.velmora.AbstractFiscalRegister/4.5"
Q_DECLARE_INTERFACE(hw::AbstractFiscalRegister, HW_ABSTRACT_FISCAL_REGISTER_IID)
