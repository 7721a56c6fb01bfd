#include "trace/hexframe.h"

#include "trace/signs.h"

#include <algorithm>

namespace trace::hexframe {

namespace {

constexpr qsizetype checkDigits = 2;
const QByteArray loadLogo = "E2";

/// Bytes before the first field.
qsizetype headSize(Direction direction)
{
    constexpr qsizetype request = 8;
    constexpr qsizetype answerHead = 6;
    return direction == Direction::ToRegister ? request : answerHead;
}

bool hasEnd(const QByteArray& bytes)
{
    const qsizetype end = bytes.size() - checkDigits - 1;
    return end > 0 && bytes.at(end) == endOfText;
}

int checkValue(QByteArrayView bytes)
{
    int value = 0;
    for (const char byte : bytes)
        value ^= static_cast<unsigned char>(byte);
    return value;
}

/// Over all between STX and the check digits.
int checkOf(const QByteArray& bytes)
{
    return checkValue(QByteArrayView(bytes).sliced(1, bytes.size() - 1 - checkDigits));
}

QByteArray digitsOf(int value)
{
    return QByteArray::number(value, 16).toUpper().rightJustified(checkDigits, '0');
}

} // namespace

HexFrame parse(const QByteArray& given, Direction direction)
{
    QByteArray bytes = given;
    // A register that works says so in the midst of its answer, too; hosts take that sign out.
    if (direction == Direction::ToHost)
        bytes.replace(acknowledge, "");
    HexFrame frame;
    frame.direction = direction;
    const qsizetype idAt = idPosition(direction);
    frame.id = bytes.size() > idAt ? bytes.at(idAt) : '\0';
    frame.command = bytes.mid(idAt + 1, 2);
    if (direction == Direction::ToHost)
        frame.answerCode = bytes.mid(idAt + 3, 2);
    for (const Place& place : fieldPlaces(bytes, direction))
        frame.fields.append(bytes.mid(place.start, place.size));
    frame.isWhole = bytes.size() >= headSize(direction) + 1 + checkDigits && hasEnd(bytes);
    // Digits that are none read as zero.
    frame.isSound = frame.isWhole && bytes.right(checkDigits).toInt(nullptr, 16) == checkOf(bytes);
    return frame;
}

QByteArray request(const QByteArray& password, const QByteArray& command, const QList<QByteArray>& fields)
{
    constexpr char firstId = 0x20;
    QByteArray body = password + firstId + command;
    for (const QByteArray& field : fields)
        body += field + separator;
    body += endOfText;
    return startOfText + body + digitsOf(checkValue(body));
}

QByteArray answer(char id, const QByteArray& command, const QByteArray& answerCode)
{
    const QByteArray body = QByteArray(1, id) + command + answerCode + endOfText;
    return startOfText + body + digitsOf(checkValue(body));
}

qsizetype announcedPicture(const QByteArray& request)
{
    const HexFrame frame = parse(request, Direction::ToRegister);
    constexpr qsizetype largest = 1 << 20;
    const qsizetype size = frame.command == loadLogo ? frame.fields.value(0).toLongLong() : 0;
    return size > 0 && size <= largest ? size + 1 : 0;
}

QList<Place> fieldPlaces(const QByteArray& bytes, Direction direction)
{
    const qsizetype end = hasEnd(bytes) ? bytes.size() - checkDigits - 1 : bytes.size();
    QList<Place> places;
    for (qsizetype start = headSize(direction); start < end;) {
        const qsizetype found = bytes.indexOf(separator, start);
        const qsizetype stop = found < 0 ? end : std::min(found, end);
        places.append({start, stop - start});
        start = stop + 1;
    }
    return places;
}

qsizetype idPosition(Direction direction)
{
    return direction == Direction::ToRegister ? passwordPlace.start + passwordPlace.size : 1;
}

QByteArray withCheckOf(const QByteArray& changed, const QByteArray& original)
{
    bool isNumber = false;
    const QByteArray digits = original.right(checkDigits);
    const int given = digits.toInt(&isNumber, 16);
    if (!hasEnd(original) || !hasEnd(changed) || !isNumber)
        return changed;
    const QByteArray made = digitsOf(checkOf(changed) ^ checkOf(original) ^ given);
    const bool isSmall = digits != digits.toUpper();
    return changed.chopped(checkDigits) + (isSmall ? made.toLower() : made);
}

} // namespace trace::hexframe
