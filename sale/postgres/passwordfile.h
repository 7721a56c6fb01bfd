#pragma once

#include "journalplace.h"
#include "postgres/postgresplace.h"

namespace sale {

/// The file that libpq is told to look for the password in; empty where it finds its own way: the address or
/// the environment names another one, or this user has a ~/.pgpass. Otherwise that of the machine's service,
/// where this user may read it: root, and the service's user when root has started it with a home folder of
/// its own.
QString passwordFile(const PostgresPlace& place, const QString& machine = machineFolder());

} // namespace sale
