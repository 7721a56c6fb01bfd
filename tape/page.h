#pragma once

#include "tape/line.h"

namespace tape {

/// A printed page, or a piece of one.
struct Page
{
    /// Normal characters on a line.
    int width = 44;
    QList<Line> lines;

    bool operator==(const Page&) const = default;
};

} // namespace tape
