#pragma once

#include <QString>

namespace emulator {

/// What a register is from the factory.
struct Identity
{
    int model = 3;
    int release = 27;
    QString serialNumber = QStringLiteral("00103000000012345678");
    /// Characters on a line of the tape.
    int width = 44;
};

} // namespace emulator
