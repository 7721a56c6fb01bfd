#include "abstractfiscalregister.h"
#include "abstractfrdriver.h"
#include "abstractserialdevice.h"
#include "abstractserialdriver.h"

// Out of line, so that the interfaces have one vtable and one typeinfo for the plugin and its host.
AbstractFrDriver::~AbstractFrDriver() = default;
AbstractSerialDriver::~AbstractSerialDriver() = default;

namespace hw {

AbstractFiscalRegister::~AbstractFiscalRegister() = default;
AbstractSerialDevice::~AbstractSerialDevice() = default;

} // namespace hw
