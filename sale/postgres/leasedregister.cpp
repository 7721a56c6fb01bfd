#include "postgres/leasedregister.h"

#include "journalerror.h"
#include "postgres/postgresconnection.h"
#include "saletr.h"

namespace sale {

void requireOwner(PostgresConnection& connection, const LeasedRegister& lease)
{
    // Who takes the register over waits for the end of this; whoever renews the lease does not.
    const bool isOwner = connection
                             .value(QStringLiteral("SELECT 1 FROM leases WHERE register = ? AND owner = ? "
                                                   "AND epoch = ? FOR KEY SHARE"),
                                 {lease.registerName, lease.owner, lease.epoch})
                             .isValid();
    if (!isOwner)
        throw JournalError(tr("journal %1: the register %2 has another owner by now")
                               .arg(connection.place().shown(), lease.registerName));
}

} // namespace sale
