#pragma once

#include "protocol.h"

#include <QString>

namespace receipt {

/// How a protocol carries a field of the JSON receipt to the register.
struct FieldCarriage
{
    enum Form {
        /// Not at all.
        NotCarried,
        /// As a number, a code or a flag.
        Value,
        /// As CP866: other characters are substituted or become question marks.
        Cp866,
        /// As CP866, and for a machine to read: other characters, or too many, make it useless.
        ExactCp866,
        Utf8
    };
    /// What else in the same item keeps the field from being carried. A line that is to be wide and high
    /// where no font is both goes out wide, with a warning.
    enum Obstacle { NoObstacle, QrCode, DoubleWidth };

    Form form = Value;
    /// The most characters that arrive; 0 for what is no text. A byte each in CP866.
    int limit = 0;
    Obstacle obstacle = NoObstacle;

    /// "no", "yes", "yes, not of a QR code", "CP866, 48", "UTF-8, 256".
    QString text() const;
};

/// What becomes of one field of the JSON receipt.
struct FieldRule
{
    /// Without the places in arrays: "items[].agentInfo.agents".
    const char* path;
    FieldCarriage xml;
    FieldCarriage hex;

    const FieldCarriage& over(Protocol protocol) const { return protocol == Protocol::Xml ? xml : hex; }
};

} // namespace receipt
