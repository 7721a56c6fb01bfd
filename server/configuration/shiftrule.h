#pragma once

namespace frserver {

/// Who opens and closes the shift.
enum class ShiftRule {
    /// A person: a sale that finds it closed is refused.
    Manual,
    /// The first document opens it; a person closes it.
    OnSale,
    /// A document within the hours opens it, and it is closed at their end.
    Scheduled
};

} // namespace frserver
