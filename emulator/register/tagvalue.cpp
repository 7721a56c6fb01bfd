#include "register/tagvalue.h"

#include "register/amounts.h"
#include "register/codepage.h"
#include "register/hexdigits.h"
#include "register/tagtable.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace emulator::tagvalue {

namespace {

using Written = std::optional<QByteArray>;
using Read = std::optional<QJsonValue>;

// Far more than any requisite has, and so little that a position of them all fits into one structure.
constexpr qsizetype longestText = 2048;
constexpr qsizetype innLength = 12;
constexpr qsizetype longestSum = 7;
constexpr int moneyDecimals = 2;
constexpr int mostDecimals = 9;

qsizetype widthOf(TagKind kind)
{
    switch (kind) {
    case TagKind::Byte:
        return 1;
    case TagKind::Word:
        return 2;
    case TagKind::Sign:
        return 6;
    default:
        return 4;
    }
}

QByteArray littleEndian(quint64 number, qsizetype width)
{
    QByteArray bytes;
    for (qsizetype index = 0; index < width; ++index)
        bytes += static_cast<char>(number >> (8 * index) & 0xFF);
    return bytes;
}

quint64 readLittleEndian(const QByteArray& bytes)
{
    quint64 number = 0;
    for (qsizetype index = bytes.size() - 1; index >= 0; --index)
        number = number << 8 | static_cast<uchar>(bytes[index]);
    return number;
}

Written fixedNumber(qint64 number, qsizetype width)
{
    const bool fits = number >= 0 && number >> (8 * width) == 0;
    return fits ? Written(littleEndian(static_cast<quint64>(number), width)) : Written();
}

// As few bytes as the number needs, one at least.
Written shortNumber(std::optional<qint64> number)
{
    if (!number || *number < 0)
        return {};
    qsizetype width = 1;
    while (*number >> (8 * width) != 0)
        ++width;
    return fixedNumber(*number, width);
}

Written text(const QString& value)
{
    return codepage::fromText(value).left(longestText);
}

Written whole(const QJsonValue& value, qsizetype width)
{
    constexpr qint64 none = -1;
    return value.isDouble() && std::trunc(value.toDouble()) == value.toDouble()
        ? fixedNumber(value.toInteger(none), width)
        : Written();
}

// A number is written in one way only, so that it reads as it was written.
std::optional<qint64> decimal(const QString& value, int decimals)
{
    const std::optional<qint64> number = parseDecimal(value.toLatin1(), decimals);
    const bool plain = number && decimalText(*number, decimals) == value;
    return plain ? number : std::nullopt;
}

Written quantity(const QString& value)
{
    const qsizetype point = value.indexOf(QLatin1Char('.'));
    const int decimals
        = point < 0 ? 0 : static_cast<int>(qMin<qsizetype>(mostDecimals, value.size() - point - 1));
    const Written number = shortNumber(decimal(value, decimals));
    return number ? Written(static_cast<char>(decimals) + *number) : Written();
}

// Local time is written as if it were UTC, so hours that a zone passes over do no harm.
Written time(const QString& value)
{
    const QString zone = QStringLiteral("Z");
    const QDateTime time = QDateTime::fromString(value + zone, Qt::ISODate);
    return time.isValid() && time.toString(Qt::ISODate) == value + zone
        ? fixedNumber(time.toSecsSinceEpoch(), widthOf(TagKind::Time))
        : Written();
}

Written sign(const QString& value)
{
    bool ok = false;
    Written bytes = fixedNumber(value.toUInt(&ok), widthOf(TagKind::Sign));
    if (!ok || value.size() != 10)
        return {};
    std::reverse(bytes->begin(), bytes->end());
    return bytes;
}

Written ofText(TagKind kind, const QString& value)
{
    switch (kind) {
    case TagKind::Text:
        return text(value);
    case TagKind::Inn:
        return value.isEmpty() ? text(value) : text(value.leftJustified(innLength));
    case TagKind::Sum:
        return shortNumber(decimal(value, moneyDecimals));
    case TagKind::Decimal:
        return quantity(value);
    case TagKind::Time:
        return time(value);
    case TagKind::Sign:
        return sign(value);
    case TagKind::Bytes:
        return bytesOfHexDigits(value.toLatin1());
    default:
        return {};
    }
}

QString trimmedEnd(QString value)
{
    while (value.endsWith(QLatin1Char(' ')))
        value.chop(1);
    return value;
}

Read readNumber(const QByteArray& bytes, qsizetype width)
{
    return bytes.size() == width ? Read(static_cast<qint64>(readLittleEndian(bytes))) : Read();
}

Read readDecimal(const QByteArray& bytes, int decimals)
{
    const bool fits = !bytes.isEmpty() && bytes.size() <= longestSum && decimals <= mostDecimals;
    return fits ? Read(decimalText(static_cast<qint64>(readLittleEndian(bytes)), decimals)) : Read();
}

Read readQuantity(const QByteArray& bytes)
{
    return bytes.isEmpty() ? Read() : readDecimal(bytes.mid(1), static_cast<uchar>(bytes.front()));
}

Read readTime(const QByteArray& bytes)
{
    if (bytes.size() != widthOf(TagKind::Time))
        return {};
    const auto seconds = static_cast<qint64>(readLittleEndian(bytes));
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(Qt::ISODate).chopped(1);
}

Read readSign(QByteArray bytes)
{
    std::reverse(bytes.begin(), bytes.end());
    const quint64 number = readLittleEndian(bytes);
    const bool fits = bytes.size() == widthOf(TagKind::Sign) && number >> 32 == 0;
    return fits ? Read(QStringLiteral("%1").arg(number, 10, 10, QLatin1Char('0'))) : Read();
}

} // namespace

std::optional<QByteArray> bytes(TagKind kind, const QJsonValue& value)
{
    switch (kind) {
    case TagKind::Byte:
    case TagKind::Word:
    case TagKind::Integer:
        return whole(value, widthOf(kind));
    default:
        return value.isString() ? ofText(kind, value.toString()) : Written();
    }
}

std::optional<QJsonValue> read(TagKind kind, const QByteArray& bytes)
{
    switch (kind) {
    case TagKind::Text:
        return codepage::toText(bytes);
    case TagKind::Inn:
        return trimmedEnd(codepage::toText(bytes));
    case TagKind::Byte:
    case TagKind::Word:
    case TagKind::Integer:
        return readNumber(bytes, widthOf(kind));
    case TagKind::Sum:
        return readDecimal(bytes, moneyDecimals);
    case TagKind::Decimal:
        return readQuantity(bytes);
    case TagKind::Time:
        return readTime(bytes);
    case TagKind::Sign:
        return readSign(bytes);
    case TagKind::Bytes:
        return QString::fromLatin1(bytes.toHex());
    case TagKind::Structure:
        break;
    }
    return {};
}

} // namespace emulator::tagvalue
