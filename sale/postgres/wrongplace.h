#pragma once

#include "journalerror.h"

namespace sale {

/// The address of the database cannot be used as it is, or its server does not let in whom it names: waiting
/// does not mend that.
class WrongPlace : public JournalError
{
public:
    using JournalError::JournalError;
};

} // namespace sale
