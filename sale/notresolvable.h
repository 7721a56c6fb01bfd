#pragma once

#include "journalerror.h"

namespace sale {

/// What a person says of a document cannot be. The text says why, as a sentence for people.
class NotResolvable : public JournalError
{
public:
    using JournalError::JournalError;
};

} // namespace sale
