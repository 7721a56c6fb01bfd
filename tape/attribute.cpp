#include "tape/attribute.h"

namespace tape {

namespace {

// As many small letters as hosts of either protocol count on, at least: over HEX 64 on the line of 44.
int smallColumns(int width)
{
    constexpr int wideLine = 48;
    return width < wideLine ? width * 16 / 11 : width * 4 / 3;
}

// Half of them, but for the line of 44, on which hosts count on 24 over HEX.
int doubleColumns(int width)
{
    constexpr int usualLine = 44;
    constexpr int onUsualLine = 24;
    return width == usualLine ? onUsualLine : width / 2;
}

} // namespace

Attributes attributesOf(int bits)
{
    constexpr Attributes all{Attribute::Small, Attribute::Bold, Attribute::DoubleHeight,
        Attribute::DoubleWidth, Attribute::Inverse};
    return Attributes::fromInt(static_cast<Attributes::Int>(bits)) & all;
}

int columns(Attributes attributes, int width)
{
    if (attributes.testFlag(Attribute::Small))
        return smallColumns(width) / (attributes.testFlag(Attribute::DoubleWidth) ? 2 : 1);
    return attributes.testFlag(Attribute::DoubleWidth) ? doubleColumns(width) : width;
}

} // namespace tape
