#pragma once

#include "outcome.h"

#include <optional>

/// What a host can say about a receipt whose closing failed.
enum class Verdict { Issued, NotIssued, Unknown };

/// Judges as frctl does; what could not be asked is unknown.
inline Verdict judge(
    const std::optional<frctl::DriveMark>& before, const std::optional<frctl::DriveMark>& after)
{
    if (!before || !after)
        return Verdict::Unknown;
    switch (frctl::verdictOf(*before, *after).outcome) {
    case frctl::DocumentOutcome::Issued:
        return Verdict::Issued;
    case frctl::DocumentOutcome::NotIssued:
        return Verdict::NotIssued;
    default:
        return Verdict::Unknown;
    }
}
