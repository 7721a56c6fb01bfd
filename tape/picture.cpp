#include "tape/picture.h"

namespace tape {

bool Picture::isSize(qint64 width, qint64 height)
{
    constexpr qint64 widest = 4096;
    constexpr qint64 highest = 65'536;
    return width > 0 && width <= widest && height > 0 && height <= highest;
}

} // namespace tape
