#pragma once

#include "line/fault.h"

#include <QByteArray>

namespace emulator::hexanswershape {

/// A frame in the form that the mode stands for; as it is for a mode that has none here.
QByteArray apply(const QByteArray& answer, FaultMode mode);

} // namespace emulator::hexanswershape
