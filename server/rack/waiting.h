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

/// The printer's, which stop the register also behind a document that is done with.
inline bool isOfPaper(const QString& reason)
{
    return reason == QStringLiteral("paper") || reason == QStringLiteral("cover");
}

/// Nobody can say what it would take, and no person is called for it. Paper, line, drive and the like are
/// waited for.
inline bool isUnexplained(const QString& reason)
{
    return reason == QStringLiteral("internal") || reason == QStringLiteral("other");
}

} // namespace frserver
