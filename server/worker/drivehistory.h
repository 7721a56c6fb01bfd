#pragma once

#include <QDateTime>
#include <QString>

namespace sale {
class DocumentStore;
}

namespace frserver {

/// What the journal knows of the beginning of the shift that is open.
struct ShiftTrace
{
    /// Of the first document of ours in it; invalid without one.
    QDateTime since = {};
    /// That document has opened the shift.
    bool isOpening = false;
    /// When the shift before it was closed by a document of ours: it began later.
    QDateTime closed = {};
};

/// The drive of a register that tells that number, as its documents in the journal have it: with the blanks
/// that may stand around it. Empty for blanks alone.
QString toldDrive(const QString& number);

/// @name What the journal knows of a register's past
/// Throw JournalError.
/// @{

/// The fiscal drive of the register's last document; empty for one that has made none.
QString lastDrive(const sale::DocumentStore& journal, const QString& registerName);
/// Nothing of a drive without a number.
ShiftTrace shiftTrace(const sale::DocumentStore& journal, const QString& drive);
/// @}

} // namespace frserver
