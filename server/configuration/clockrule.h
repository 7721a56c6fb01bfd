#pragma once

namespace frserver {

/// What becomes of a register's clock that is wrong.
enum class ClockRule {
    /// It is told.
    Warn,
    /// It is set, too, when that can do no harm.
    Set
};

} // namespace frserver
