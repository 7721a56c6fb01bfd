#pragma once

#include "journalerror.h"

namespace sale {

/// Another program is at work on the register, under whatever name and from whichever machine: nothing may be
/// sent to it.
class RegisterTaken : public JournalError
{
public:
    using JournalError::JournalError;
};

} // namespace sale
