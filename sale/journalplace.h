#pragma once

#include <QString>

namespace sale {

/// Where the package makes the folder of this machine's journal.
QString machineFolder();

/// The journal of this machine, one for all programs and users: in the machine's folder where it is, else in
/// the user's folder for state ($XDG_STATE_HOME/frspf). The environment variable FRSPF_JOURNAL names another
/// file. Throws JournalError for a machine's folder that this user cannot write: another journal in its stead
/// would sell what this one knows as sold.
QString journalPlace(const QString& folder = machineFolder());
/// Throws JournalError where this user cannot make such a file, which is not looked for: the folders above it
/// are made with it.
void requireJournalPlace(const QString& fileName);
/// Where earlier releases kept their journal of this user: to be taken over into the one of the machine.
QString formerJournalPlace();

} // namespace sale
