#pragma once

namespace sale {

/// How the mark of the fiscal drive is read. The host chooses, since it knows what guards the answers of its
/// register.
enum class MarkReading {
    /// It counts when two readings in a row agree: for a protocol without a check value, where a digit that
    /// changes on the line goes unnoticed (XML).
    UntilTwoAgree,
    /// One reading is enough: for a protocol whose answers have a check value (HEX).
    Once
};

/// For a register whose answers have a check value or not.
constexpr MarkReading markReadingFor(bool answersAreChecked)
{
    return answersAreChecked ? MarkReading::Once : MarkReading::UntilTwoAgree;
}

} // namespace sale
