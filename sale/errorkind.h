#pragma once

#include "documentstate.h"

#include <QString>

#include <optional>

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
/// Other for a name that is none.
ErrorKind errorKindNamed(const QString& name);
/// What the cashier does, in Russian. It is mostly to repeat the document: never one that is issued or may
/// be.
QString errorAction(ErrorKind kind, const std::optional<DocumentState>& state = {});

} // namespace sale
