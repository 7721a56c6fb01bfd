#pragma once

#include "failure.h"
#include "verdict.h"

#include <optional>

namespace sale {

/// How the work on a document ended.
struct DocumentResult
{
    Verdict verdict;
    /// Empty when all went well. A document may be issued and have a failure behind it.
    std::optional<Failure> failure;
};

} // namespace sale
