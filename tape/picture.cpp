#include "tape/picture.h"

namespace tape {

bool Picture::isWhole() const
{
    constexpr int widest = 4096;
    constexpr int highest = 65'536;
    const bool plausible = width > 0 && width <= widest && height > 0 && height <= highest;
    return plausible && rows.size() == rowSize(width) * height;
}

} // namespace tape
