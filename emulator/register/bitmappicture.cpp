#include "register/bitmappicture.h"

#include "register/bitmaphead.h"

#include <QtEndian>

namespace emulator {

namespace {

constexpr qsizetype dotsAt = 10;
constexpr qsizetype headSizeAt = 14;
constexpr qsizetype compressionAt = 30;

/// Rows begin at multiples of four bytes.
qsizetype storedRowSize(int width)
{
    return (static_cast<qsizetype>(width) + 31) / 32 * 4;
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

bool isReadable(const QByteArray& bitmap, const BitmapHead& head)
{
    const qint64 dots = numberAt<quint32>(bitmap, dotsAt);
    return head.bitsPerDot == 1 && numberAt<quint32>(bitmap, compressionAt) == 0 && dots > 0
        && dots + storedRowSize(head.width) * head.height <= bitmap.size();
}

QByteArray rowsOf(const QByteArray& bitmap, const BitmapHead& head)
{
    const qint64 dots = numberAt<quint32>(bitmap, dotsAt);
    const bool isOneTheBlack = isOneBlack(bitmap);
    QByteArray rows;
    for (qint64 row = 0; row < head.height; ++row) {
        const qint64 from
            = dots + storedRowSize(head.width) * (head.isUpsideDown ? head.height - 1 - row : row);
        rows += blackDots(bitmap.mid(from, tape::Picture::rowSize(head.width)), head.width, isOneTheBlack);
    }
    return rows;
}

} // namespace

std::optional<tape::Picture> pictureOf(const QByteArray& bitmap, const QString& title)
{
    const auto head = BitmapHead::read(bitmap);
    if (!head || !tape::Picture::isSize(head->width, head->height))
        return std::nullopt;
    tape::Picture picture{title, head->width, static_cast<int>(head->height), {}};
    picture.rows = isReadable(bitmap, *head)
        ? rowsOf(bitmap, *head)
        : QByteArray(tape::Picture::rowSize(picture.width) * picture.height, '\0');
    return picture;
}

} // namespace emulator
