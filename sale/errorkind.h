#pragma once

#include <QString>

namespace sale {

/// What went wrong, as far as it decides what is to be done: the same names on both protocols, and no others.
enum class ErrorKind {
    Paper,
    Cover,
    ShiftExpired,
    ShiftClosed,
    DriveFull,
    DriveExpired,
    OfdBlocked,
    Clock,
    Mark,
    Data,
    Cash,
    Busy,
    Line,
    WrongRegister,
    Fatal,
    Internal,
    Other
};

/// "paper", "cover", "shiftExpired" ... in the order of the enumeration.
QString errorKindName(ErrorKind kind);
/// What the cashier does, in Russian.
QString errorAction(ErrorKind kind);

} // namespace sale
