#pragma once

#include "register/drivelife.h"

#include <QString>

namespace emulator {

/// What a register is from the factory, and the fiscal drive that was put into it.
struct Identity
{
    int model = 3;
    int release = 27;
    QString serialNumber = QStringLiteral("00103000000012345678");
    /// 16 digits. Drives that are no true ones begin with 9999.
    QString driveNumber = QStringLiteral("9999078900001234");
    /// Characters on a line of the tape.
    int width = 44;
    /// A receipt that goes to the customer by mail only is not printed; else paper it must have as any other.
    bool electronicWithoutPaper = true;
    DriveLife driveLife;
};

} // namespace emulator
