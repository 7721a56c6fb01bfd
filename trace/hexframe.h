#pragma once

#include "trace/frame.h"

namespace trace {

/// A frame of the HEX protocol in its parts. One that broke off has what there is of it.
struct HexFrame
{
    Direction direction = Direction::ToRegister;
    char id = 0;
    /// Two digits.
    QByteArray command;
    /// Of an answer: two digits.
    QByteArray answerCode;
    QList<QByteArray> fields;
    /// It has its end and its check digits.
    bool isWhole = false;
    /// The check digits are right.
    bool isSound = false;
};

namespace hexframe {

/// Of a frame that begins with STX.
HexFrame parse(const QByteArray& bytes, Direction direction);
QByteArray request(const QByteArray& password, const QByteArray& command, const QList<QByteArray>& fields);
/// An answer without fields.
QByteArray answer(char id, const QByteArray& command, const QByteArray& answerCode);

/// Size of the picture with its ESC that the host sends behind this request; 0 when it sends none.
qsizetype announcedPicture(const QByteArray& request);

/// Where a field lies within the bytes.
struct Place
{
    qsizetype start = 0;
    qsizetype size = 0;
};
/// Those of all fields, in order.
QList<Place> fieldPlaces(const QByteArray& bytes, Direction direction);
/// Where the packet id lies.
qsizetype idPosition(Direction direction);
/// Where the password of a request lies; an answer has none.
constexpr Place passwordPlace{1, 4};

/// The frame with check digits that are right if those of the frame it was made from were, and as wrong if
/// they were not.
QByteArray withCheckOf(const QByteArray& changed, const QByteArray& original);

} // namespace hexframe

} // namespace trace
