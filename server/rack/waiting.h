#pragma once

#include <QString>

namespace frserver {

/// What keeps a register from its next document: "paper", "cover", "line", "busy", "wrongRegister",
/// "newDrive", "testDrive", "otherMachine", "needsReview", "journal", "worker" and the other names of
/// sale::ErrorKind.
struct Waiting
{
    QString reason;
    /// For people.
    QString text;
};

} // namespace frserver
