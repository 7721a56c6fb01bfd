#pragma once

#include "tape/page.h"

namespace emulator {

/// What waits for paper of a document that nobody is going to ask for.
struct WaitingPage
{
    /// Of the fiscal drive; 0 for what is none.
    quint32 document = 0;
    tape::Page page;

    bool operator==(const WaitingPage&) const = default;
};

} // namespace emulator
