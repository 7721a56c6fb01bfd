#include "register/bitmaphead.h"

#include <QtEndian>

namespace emulator {

std::optional<BitmapHead> BitmapHead::read(const QByteArray& bytes)
{
    constexpr qsizetype size = 54;
    constexpr qsizetype widthAt = 18;
    constexpr qsizetype heightAt = 22;
    constexpr qsizetype depthAt = 28;
    if (bytes.size() < size || !bytes.startsWith("BM"))
        return std::nullopt;
    const char* const data = bytes.constData();
    // Rows that are told from the top downwards have a negative height.
    const qint64 height = qFromLittleEndian<qint32>(data + heightAt);
    return BitmapHead{qFromLittleEndian<qint32>(data + widthAt), qAbs(height),
        qFromLittleEndian<qint16>(data + depthAt), height > 0};
}

} // namespace emulator
