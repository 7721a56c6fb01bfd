#pragma once

#include <QDateTime>
#include <QString>

namespace sale {
class DocumentStore;
}

namespace frserver {

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
