#include "postgres/leasedregister.h"

#include "journalerror.h"
#include "postgres/postgresconnection.h"
#include "saletr.h"

namespace sale {

namespace {

const QString ownerMember = QStringLiteral("owner");
const QString epochMember = QStringLiteral("epoch");

} // namespace

QJsonObject LeasedRegister::toJson() const
{
    return {{ownerMember, owner}, {epochMember, epoch}};
}

LeasedRegister LeasedRegister::fromJson(const QString& registerName, const QJsonObject& json)
{
    return {registerName, json.value(ownerMember).toString(), json.value(epochMember).toInteger()};
}

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
