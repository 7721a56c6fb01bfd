#pragma once

#include <functional>

namespace emulator::panel {

/// What the register's own program does for its panel.
struct Hands
{
    /// Keeps what has changed and shows what was printed; false when it cannot be kept.
    std::function<bool()> keep = [] { return true; };
    /// Nothing is on its way over the line any more.
    std::function<void()> dropLine = [] {};
};

} // namespace emulator::panel
