#include "register/logo.h"

#include "register/bitmaphead.h"
#include "register/parts.h"

namespace emulator {

namespace {

bool isLogo(const QByteArray& bitmap)
{
    constexpr int logoWidth = 288;
    constexpr int logoHeight = 100;
    const auto head = BitmapHead::read(bitmap);
    return head && head->width == logoWidth && head->height == logoHeight && head->bitsPerDot == 1;
}

} // namespace

Refusal Logo::set(const QByteArray& bitmap)
{
    return replace(bitmap, isLogo(bitmap));
}

Refusal Logo::setHeaderPicture(const QByteArray& bitmap)
{
    return replace(bitmap, bitmap.isEmpty() || isHeaderPicture(bitmap));
}

Refusal Logo::clear()
{
    return replace({}, true);
}

bool Logo::isHeaderPicture(const QByteArray& bitmap)
{
    // Hosts scale their picture to this before they send it.
    constexpr int widest = 575;
    constexpr int lowest = 50;
    constexpr int highest = 100;
    const auto head = BitmapHead::read(bitmap);
    return head && head->width > 0 && head->width <= widest && head->height >= lowest
        && head->height <= highest;
}

Refusal Logo::replace(const QByteArray& bitmap, bool fits)
{
    if (m_parts.state.open.document.isOpen())
        return Refusal::WrongState;
    if (!fits)
        return Refusal::BadValue;
    m_parts.state.logo = bitmap;
    return Refusal::None;
}

} // namespace emulator
