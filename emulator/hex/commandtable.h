#pragma once

#include "hex/answer.h"
#include "hex/fields.h"

namespace emulator {

class Register;

/// One command of the HEX protocol.
struct HexCommand
{
    int code;
    HexAnswer (*handler)(Register& device, HexFields& fields);
    /// Fewer fields are a bad value.
    int fields;
    /// The register must have been started.
    bool started;

    /// Nothing for a code that no command has.
    static const HexCommand* find(int code);
};

} // namespace emulator
