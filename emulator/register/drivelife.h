#pragma once

#include <QtGlobal>

#include <optional>

namespace emulator {

/// How far a fiscal drive has come in its life when it is put into the register.
struct DriveLife
{
    /// Bits that fill up with age.
    int phase = fiscalMode;
    /// Documents that it has room for; no value for as many as are wanted.
    std::optional<qint64> documentsLeft;
    /// Days until it expires; no value for those of a new one.
    std::optional<int> daysLeft;

    static constexpr int ready = 1;
    static constexpr int fiscalMode = 3;
    static constexpr int closed = 7;
    static constexpr int archiveRead = 15;
};

} // namespace emulator
