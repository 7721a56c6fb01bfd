#pragma once

#include <QRegularExpression>

namespace emulator {

/// What the check of some marking codes comes to, whatever the register would say of them.
struct MarkVerdict
{
    /// Looked for in the code, byte by byte.
    QRegularExpression pattern;
    /// The bits of tag 2106.
    int result = 0;
};

} // namespace emulator
