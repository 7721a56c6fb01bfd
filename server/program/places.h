#pragma once

#include "configuration/configuration.h"
#include "program/listenaddress.h"
#include "program/options.h"

namespace frserver {

/// File or address of the journal: what the configuration says, or the machine's.
QString journalOf(const Configuration& configuration);

/// What the run file stands beside. Several services of a machine may have one database for their journal.
QString runPlaceOf(const Options& options, const Configuration& configuration);

/// Throws ConfigurationError for what the configuration says, std::invalid_argument for the command line.
ListenAddress listenAddress(const Options& options, const Configuration& configuration);

} // namespace frserver
