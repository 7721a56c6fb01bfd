#pragma once

#include <QByteArray>

#include <optional>

namespace emulator {

/// What the head of a Windows bitmap tells of the picture behind it.
struct BitmapHead
{
    int width = 0;
    /// Rows, from whichever end of the picture they are told.
    qint64 height = 0;
    int bitsPerDot = 0;
    /// The lowest row is told first.
    bool isUpsideDown = false;

    /// No value for something else than a bitmap.
    static std::optional<BitmapHead> read(const QByteArray& bytes);
};

} // namespace emulator
