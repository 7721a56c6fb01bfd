#pragma once

#include "register/waitingpage.h"

#include <QList>

#include <optional>

namespace emulator {

/// The roll in the printer, and what waits for the next one.
struct Paper
{
    bool isIn = true;
    /// The printer's cover is open, so that nothing is printed. It is not kept over a power cut.
    bool isCoverOpen = false;
    /// Lines that are left; no value for as many as are wanted.
    std::optional<qsizetype> linesLeft;
    /// A document that the roll ends on is answered like one that was printed.
    bool endsQuietly = false;
    /// The rest of documents that nobody is going to ask for.
    QList<WaitingPage> waiting;

    bool canPrint() const { return isIn && !isCoverOpen; }
    /// How many of so many lines get onto the paper. The roll is gone when not all do.
    qsizetype take(qsizetype wanted);
};

} // namespace emulator
