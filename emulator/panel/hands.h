#pragma once

#include "register/drivenumber.h"
#include "register/storeddocument.h"

#include <QList>

#include <functional>

namespace emulator::panel {

/// What the register's own program does for its panel.
struct Hands
{
    /// Keeps what has changed and shows what was printed; false when it cannot be kept.
    std::function<bool()> keep = [] { return true; };
    /// Nothing is on its way over the line any more.
    std::function<void()> dropLine = [] {};
    /// All documents of the fiscal drive that are kept for it, once they are asked for; null without a state.
    std::function<QList<StoredDocument>()> documents = {};
    /// Number of the fiscal drive that comes next.
    std::function<QString()> nextDrive = &drivenumber::fresh;
};

} // namespace emulator::panel
