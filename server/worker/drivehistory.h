#pragma once

#include <QDateTime>
#include <QString>

namespace sale {
class DocumentStore;
}

namespace frserver {

/// The drive of a register that tells that number, as its documents in the journal have it: with the blanks
/// that may stand around it. Empty for blanks alone.
QString toldDrive(const QString& number);

/// @name What the journal knows of a register's past
/// Throw JournalError.
/// @{

/// The fiscal drive of the register's last document; empty for one that has made none.
QString lastDrive(const sale::DocumentStore& journal, const QString& registerName);
/// When the shift that is open was opened, as far as the journal tells: otherwise when it had its first
/// document of ours, or an invalid time.
QDateTime shiftSince(const sale::DocumentStore& journal, const QString& drive);
/// @}

} // namespace frserver
