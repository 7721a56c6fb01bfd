#pragma once

namespace sale {

/// What becomes of a receipt whose marking codes the register does not find good.
enum class MarkPolicy {
    /// A code that is bad, or that was not checked on line, is an error.
    Strict,
    /// A bad code is an error, one that was not checked on line a warning.
    Warn,
    /// Nothing is an error; bad codes are warnings too.
    Any
};

} // namespace sale
