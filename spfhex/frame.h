#pragma once

#include <QByteArray>
#include <QList>
#include <QVariant>

/// The frames of the HEX protocol: pure functions between fields and bytes, without a port.
namespace spfhex::frame {

enum ControlByte : unsigned char {
    Stx = 0x02,
    Etx = 0x03,
    Enq = 0x05,
    Ack = 0x06,
    Esc = 0x1B,
    FieldSeparator = 0x1C
};

/// A request: STX, password, id, code, fields each ended by a separator, ETX, check digits. A QByteArray
/// field goes as it stands, a QString as UTF-8, a number in decimal; a null QVariant makes an empty field.
QByteArray build(quint8 id, int code, const QList<QVariant>& fields);

/// Whether the bytes are a whole answer frame with the right check digits.
bool isValid(const QByteArray& answer);

/// The packet id of a valid answer: that of the request that it answers.
quint8 id(const QByteArray& answer);

/// The answer code; ok turns false when its two digits are none.
int answerCode(const QByteArray& answer, bool* ok);

/// The data block of a valid answer: its fields without the separator behind the last one.
QByteArray data(const QByteArray& answer);

/// The fields of a data block.
QList<QByteArray> fields(const QByteArray& data);

} // namespace spfhex::frame
