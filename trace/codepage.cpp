#include "trace/codepage.h"

#include <QRegularExpression>

namespace trace {

namespace {

constexpr unsigned char firstHigh = 0x80;
constexpr unsigned char firstFrame = 0xB0;
constexpr unsigned char firstLateSmall = 0xE0;
constexpr unsigned char firstExtra = 0xF0;
// Frames and shades, and what stands behind the alphabet.
const QString boxDrawing = QStringLiteral("░▒▓│┤╡╢╖╕╣║╗╝╜╛┐└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀");
const QString extras = QStringLiteral("ЁёЄєЇїЎў°∙·√№¤■\u00A0");
// Х and х of the code page.
constexpr char highCapital = static_cast<char>(0x95);
constexpr char highSmall = static_cast<char>(0xE5);

QChar highLetter(unsigned char byte)
{
    constexpr int capitalA = 0x0410;
    constexpr int smallEr = 0x0440;
    if (byte < firstFrame)
        return QChar(capitalA + byte - firstHigh);
    if (byte < firstLateSmall)
        return boxDrawing.at(byte - firstFrame);
    return byte < firstExtra ? QChar(smallEr + byte - firstLateSmall) : extras.at(byte - firstExtra);
}

bool isCapital(unsigned char byte)
{
    constexpr unsigned char firstSmall = 0xA0;
    return byte < firstSmall;
}

char standInAscii(char byte)
{
    if (byte >= '0' && byte <= '9')
        return '0';
    if (byte >= 'A' && byte <= 'Z')
        return 'X';
    return byte >= 'a' && byte <= 'z' ? 'x' : byte;
}

/// A letter of that many bytes; empty for bytes that are no UTF-8.
QByteArray wideStandIn(qsizetype size, bool capital)
{
    switch (size) {
    case 2:
        return capital ? QByteArray("Х") : QByteArray("х");
    case 3:
        return "—";
    case 4:
        return "\xF0\x9D\x90\xB1";
    default:
        return {};
    }
}

qsizetype sequenceSize(const QByteArray& bytes, qsizetype start)
{
    qsizetype end = start + 1;
    while (end < bytes.size() && (static_cast<unsigned char>(bytes.at(end)) & 0xC0U) == firstHigh)
        ++end;
    return end - start;
}

/// A reference to a letter by its number becomes one to another letter, with as many digits.
QByteArray standInNumber(const QByteArray& digits, int base)
{
    const int number = digits.toInt(nullptr, base);
    // Line ends and signs stay.
    if (number < '0' || digits.size() < 2)
        return digits;
    const int letter = QLatin1Char(digits.size() == 2 ? 'X' : 'x').unicode();
    return QByteArray::number(letter, base).rightJustified(digits.size(), '0');
}

/// The reference that begins there, for a start, and what takes its place; empty when none does. The text of
/// data that came without CDATA is escaped twice.
struct Reference
{
    QByteArray text;
    QByteArray standIn;
};

Reference referenceAt(const QByteArray& bytes, qsizetype start)
{
    static const QRegularExpression form(
        QStringLiteral("^(&(?:amp;)?)(?:(quot|apos|lt|gt|amp)|#([0-9]{1,7})|#x([0-9A-Fa-f]{1,6}));"));
    constexpr qsizetype longest = 16;
    if (bytes.at(start) != '&')
        return {};
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(bytes.mid(start, longest)));
    if (!match.hasMatch())
        return {};
    const QByteArray head = match.captured(1).toLatin1();
    const QByteArray decimal = match.captured(3).toLatin1();
    const QByteArray hexadecimal = match.captured(4).toLatin1();
    const QByteArray text = match.captured(0).toLatin1();
    if (!decimal.isEmpty())
        return {text, head + '#' + standInNumber(decimal, 10) + ';'};
    if (!hexadecimal.isEmpty())
        return {text, head + "#x" + standInNumber(hexadecimal, 16) + ';'};
    return {text, text};
}

} // namespace

QString fromCp866(const QByteArray& bytes)
{
    QString text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text.append(code < firstHigh ? QChar(code) : highLetter(code));
    }
    return text;
}

QByteArray standInCp866(const QByteArray& bytes)
{
    QByteArray result = bytes;
    for (char& byte : result) {
        const auto code = static_cast<unsigned char>(byte);
        byte = code < firstHigh ? standInAscii(byte) : isCapital(code) ? highCapital : highSmall;
    }
    return result;
}

QByteArray standInUtf8(const QByteArray& bytes)
{
    QByteArray result;
    for (qsizetype at = 0; at < bytes.size();) {
        if (const Reference reference = referenceAt(bytes, at); !reference.text.isEmpty()) {
            result += reference.standIn;
            at += reference.text.size();
        } else if (static_cast<unsigned char>(bytes.at(at)) < firstHigh) {
            result += standInAscii(bytes.at(at++));
        } else {
            const qsizetype size = sequenceSize(bytes, at);
            const QByteArray wide = wideStandIn(size, QString::fromUtf8(bytes.mid(at, size)).at(0).isUpper());
            result += wide.isEmpty() ? QByteArray(size, 'x') : wide;
            at += size;
        }
    }
    return result;
}

} // namespace trace
