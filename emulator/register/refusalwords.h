#pragma once

#include "register/refusal.h"

#include <QString>

namespace emulator {

class Register;

/// What a refusal says, for whoever writes the host; one that lies in the register's state tells that, too.
QString refusalWords(Refusal refusal, const Register& device);

} // namespace emulator
