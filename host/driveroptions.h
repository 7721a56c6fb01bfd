#pragma once

#include <QHash>
#include <QMetaType>

namespace hw::fr {

/// What a driver can do or does by itself, as single bits of a 64-bit mask. Hosts set them by their numbers;
/// only the fiscal drive bit is looked at by this library's own code.
enum Option : quint64 {
    OptionBit1 = 0x2,
    OptionBit2 = 0x4,
    /// The device has a fiscal drive: AbstractFrDriver::useFN.
    OptionUseFn = 0x10,
    OptionBit9 = 0x200,
    OptionBit10 = 0x400,
    OptionBit11 = 0x800,
    OptionBit19 = 0x80000,
    OptionBit24 = 0x1000000,
    OptionBit31 = 0x80000000,
    OptionBit36 = 0x1000000000
};

/// Options set in the host's settings; they overrule what a driver asks for itself.
using DriverOptions = QHash<Option, bool>;

} // namespace hw::fr

Q_DECLARE_METATYPE(hw::fr::Option)
