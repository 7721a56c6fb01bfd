#pragma once

#include "register/refusal.h"

#include <QString>

namespace emulator {

/// What an answer code says, for whoever writes the host.
QString refusalWords(Refusal refusal);

} // namespace emulator
