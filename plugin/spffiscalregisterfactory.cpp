#include "spffiscalregisterfactory.h"

#include "spffiscalregister.h"

namespace hw {

namespace {

// Known by name before the first device object is asked for.
void registerDeviceType()
{
    qRegisterMetaType<SpfFiscalRegister*>("hw::SpfFiscalRegister*");
}
Q_CONSTRUCTOR_FUNCTION(registerDeviceType)

} // namespace

SpfFiscalRegisterFactory::SpfFiscalRegisterFactory(QObject* parent)
    : QObject(parent)
{
}

SpfFiscalRegisterFactory::~SpfFiscalRegisterFactory() = default;

QVariant SpfFiscalRegisterFactory::getObject() const
{
    return QVariant::fromValue(new SpfFiscalRegister);
}

} // namespace hw
