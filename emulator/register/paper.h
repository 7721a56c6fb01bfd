#pragma once

#include <QStringList>

#include <optional>

namespace emulator {

/// The roll in the printer, and what waits for the next one.
struct Paper
{
    bool isIn = true;
    /// Lines that are left; no value for as many as are wanted.
    std::optional<qsizetype> linesLeft;
    /// A document that the roll ends on is answered like one that was printed.
    bool endsQuietly = false;
    /// The rest of the last document, when nobody is going to ask for it.
    QStringList waiting;

    /// How many of so many lines get onto the paper. The roll is gone when not all do.
    qsizetype take(qsizetype wanted);
};

} // namespace emulator
