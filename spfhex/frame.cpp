#include "frame.h"

#include "numeric.h"

#include <QString>

namespace spfhex::frame {

namespace {

constexpr char password[] = "QZXW";

// STX, id, two digits of the command, two of the answer code, ETX, two check digits.
constexpr qsizetype smallestAnswer = 9;
constexpr qsizetype headerSize = 6;
// Separator behind the last field, ETX, two check digits.
constexpr qsizetype trailerSize = 4;

QByteArray twoDigits(int value)
{
    return QByteArray::number(value, 16).toUpper().rightJustified(2, '0');
}

int checkValue(const QByteArray& bytes)
{
    return numeric::calcLRC(bytes) & 0xFF;
}

} // namespace

QByteArray build(quint8 id, int code, const QList<QVariant>& fields)
{
    QByteArray body(password);
    body.append(static_cast<char>(id));
    body.append(twoDigits(code));
    for (const QVariant& field : fields) {
        body.append(field.toByteArray());
        body.append(static_cast<char>(FieldSeparator));
    }
    body.append(static_cast<char>(Etx));
    body.append(twoDigits(checkValue(body)));
    body.prepend(static_cast<char>(Stx));
    return body;
}

bool isValid(const QByteArray& answer)
{
    const qsizetype size = answer.size();
    if (size < smallestAnswer || answer.at(0) != Stx || answer.at(size - 3) != Etx)
        return false;
    return checkValue(answer.mid(1, size - 3)) == answer.right(2).toInt(nullptr, 16);
}

quint8 id(const QByteArray& answer)
{
    return static_cast<quint8>(answer.at(1));
}

int answerCode(const QByteArray& answer, bool* ok)
{
    return answer.mid(4, 2).toInt(ok, 16);
}

QByteArray data(const QByteArray& answer)
{
    // Meant to stay: an answer without fields gives a length of -1, and its last three bytes come back as
    // data.
    return answer.mid(headerSize, answer.size() - headerSize - trailerSize);
}

QList<QByteArray> fields(const QByteArray& data)
{
    return data.split(static_cast<char>(FieldSeparator));
}

} // namespace spfhex::frame
