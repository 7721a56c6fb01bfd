#include "xml/print.h"

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

const QString introduction = QStringLiteral("‼?");
constexpr qsizetype codeAt = 2;
constexpr qsizetype numberAt = 3;
constexpr qsizetype attributeDigits = 3;
constexpr qsizetype heightDigits = 4;
constexpr int lineHeight = 28;
// Bold, which hosts have for double size, double width, small, double height and inverted.
constexpr int lineAttributes[] = {8, 32, 1, 16, 128};
constexpr qsizetype qrLengthDigits = 4;
constexpr qsizetype barcodeLengthDigits = 2;
constexpr qsizetype mostLengthDigits = 6;

/// Walks through the text from sequence to sequence.
class Reader
{
public:
    Reader(const QString& text, bool strict)
        : m_text(text)
        , m_strict(strict)
    {
    }

    std::optional<QList<PrintPiece>> readAll()
    {
        QList<PrintPiece> pieces;
        while (m_position <= m_text.size()) {
            const std::optional<PrintPiece> piece = readPiece();
            if (!piece)
                return std::nullopt;
            pieces.append(*piece);
        }
        return pieces;
    }

private:
    std::optional<PrintPiece> readPiece()
    {
        const QString line = m_text.mid(m_position, lineEnd() - m_position);
        if (!line.startsWith(introduction)) {
            m_position += line.size() + 1;
            return PrintPiece{PrintPiece::Kind::Line, line, 0};
        }
        switch (line.size() > codeAt ? line.at(codeAt).unicode() : u' ') {
        case u'f':
            return readLine(line);
        case u'q':
            return readPicture(PrintPiece::Kind::QrCode, qrLengthDigits);
        case u'b':
            return readPicture(PrintPiece::Kind::Barcode, barcodeLengthDigits);
        default:
            return std::nullopt;
        }
    }

    std::optional<PrintPiece> readLine(const QString& line)
    {
        const std::optional<int> attribute = number(m_position + numberAt, attributeDigits);
        const std::optional<int> height = number(m_position + numberAt + attributeDigits, heightDigits);
        if (!attribute || !height || (m_strict && !isUsual(*attribute, *height)))
            return std::nullopt;
        m_position += line.size() + 1;
        return PrintPiece{
            PrintPiece::Kind::Line, line.mid(numberAt + attributeDigits + heightDigits), *attribute};
    }

    // A line without attributes has no sequence.
    static bool isUsual(int attribute, int height)
    {
        const auto* const found = std::find(std::begin(lineAttributes), std::end(lineAttributes), attribute);
        return found != std::end(lineAttributes) && height == lineHeight;
    }

    // A length that needs more digits is not cut; zeros fill it up to the least number of digits alone.
    std::optional<PrintPiece> readPicture(PrintPiece::Kind kind, qsizetype leastDigits)
    {
        std::optional<PrintPiece> piece = readPictureOf(kind, leastDigits);
        const bool isPadded = m_text.mid(m_position + numberAt, 1) == QStringLiteral("0");
        for (qsizetype digits = leastDigits + 1; digits <= mostLengthDigits && !piece && !isPadded; ++digits)
            piece = readPictureOf(kind, digits);
        return piece;
    }

    // The text may hold line feeds of its own; its length tells where it ends.
    std::optional<PrintPiece> readPictureOf(PrintPiece::Kind kind, qsizetype digits)
    {
        const std::optional<int> length = number(m_position + numberAt, digits);
        const qsizetype start = m_position + numberAt + digits;
        if (!length)
            return std::nullopt;
        const qsizetype end = start + *length;
        if (end > m_text.size() || (end < m_text.size() && m_text.at(end) != QLatin1Char('\n')))
            return std::nullopt;
        m_position = end + 1;
        return PrintPiece{kind, m_text.mid(start, *length), 0};
    }

    std::optional<int> number(qsizetype at, qsizetype digits) const
    {
        const QString text = m_text.mid(at, digits);
        const bool good = text.size() == digits
            && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
        return good ? std::optional<int>(text.toInt()) : std::nullopt;
    }

    qsizetype lineEnd() const
    {
        const qsizetype end = m_text.indexOf(QLatin1Char('\n'), m_position);
        return end < 0 ? m_text.size() : end;
    }

    const QString m_text;
    const bool m_strict;
    qsizetype m_position = 0;
};

} // namespace

std::optional<QList<PrintPiece>> readPrintText(const QString& text, bool strict)
{
    return Reader(text, strict).readAll();
}

} // namespace emulator
