#include "register/bitmappicture.h"

#include "register/bitmaphead.h"

#include <QtEndian>

namespace emulator {

namespace {

constexpr qsizetype dotsAt = 10;
constexpr qsizetype headSizeAt = 14;
constexpr qsizetype heightAt = 22;
constexpr qsizetype compressionAt = 30;

/// Rows begin at multiples of four bytes.
qsizetype storedRowSize(int width)
{
    return (width + 31) / 32 * 4;
}

template <typename T>
qint64 numberAt(const QByteArray& bytes, qsizetype at)
{
    return at >= 0 && at + static_cast<qsizetype>(sizeof(T)) <= bytes.size()
        ? qFromLittleEndian<T>(bytes.constData() + at)
        : 0;
}

// The brighter of the two colours is the paper.
bool isOneBlack(const QByteArray& bitmap)
{
    const auto brightness = [&bitmap](qsizetype colour) {
        constexpr qsizetype fileHeadSize = 14;
        const qsizetype at = fileHeadSize + numberAt<qint32>(bitmap, headSizeAt) + colour * 4;
        return numberAt<quint8>(bitmap, at) + numberAt<quint8>(bitmap, at + 1)
            + numberAt<quint8>(bitmap, at + 2);
    };
    return brightness(1) < brightness(0);
}

// Dots behind the right edge are white.
QByteArray blackDots(QByteArray row, int width, bool isOneTheBlack)
{
    if (!isOneTheBlack) {
        for (char& byte : row)
            byte = static_cast<char>(~byte);
    }
    if (const int used = width % 8; used != 0)
        row.back() = static_cast<char>(row.back() & (0xFF << (8 - used)));
    return row;
}

} // namespace

std::optional<tape::Picture> pictureOf(const QByteArray& bitmap, const QString& title)
{
    const auto head = BitmapHead::read(bitmap);
    if (!head)
        return std::nullopt;
    const qsizetype rowSize = tape::Picture::rowSize(head->width);
    const qsizetype stored = storedRowSize(head->width);
    tape::Picture picture{title, head->width, static_cast<int>(head->height),
        QByteArray(rowSize * static_cast<qsizetype>(head->height), '\0')};
    const qint64 dots = numberAt<quint32>(bitmap, dotsAt);
    const bool isReadable = head->bitsPerDot == 1 && numberAt<quint32>(bitmap, compressionAt) == 0 && dots > 0
        && dots + stored * head->height <= bitmap.size();
    if (!isReadable)
        return picture;
    const bool isUpsideDown = numberAt<qint32>(bitmap, heightAt) > 0;
    const bool isOneTheBlack = isOneBlack(bitmap);
    for (qsizetype row = 0; row < picture.height; ++row) {
        const qsizetype from = dots + stored * (isUpsideDown ? picture.height - 1 - row : row);
        picture.rows.replace(
            row * rowSize, rowSize, blackDots(bitmap.mid(from, rowSize), picture.width, isOneTheBlack));
    }
    return picture;
}

} // namespace emulator
