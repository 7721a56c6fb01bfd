#pragma once

#include "program/options.h"

namespace frserver {

/// backup, export, import, migrate and restored. Gives the exit status; throws sale::JournalError.
int runJournalCommand(const Options& options, const QString& journal);

} // namespace frserver
