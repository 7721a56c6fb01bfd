#include "register/hexdigits.h"

namespace emulator {

std::optional<QByteArray> bytesOfHexDigits(const QByteArray& digits)
{
    // Letters that are no digits are passed over by the conversion, so it must come out the same again.
    const QByteArray bytes = QByteArray::fromHex(digits);
    return bytes.toHex() == digits.toLower() ? std::optional<QByteArray>(bytes) : std::nullopt;
}

} // namespace emulator
