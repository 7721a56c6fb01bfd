#include "postgres/leasedregister.h"

#include "journalerror.h"
#include "postgres/postgresconnection.h"
#include "registertaken.h"
#include "saletr.h"

namespace sale {

namespace {

const QString ownerMember = QStringLiteral("owner");
const QString epochMember = QStringLiteral("epoch");
const QString holdsDrive = QStringLiteral(
    " AND EXISTS (SELECT 1 FROM drives WHERE drive = ? "
    "AND drives.register = leases.register AND drives.epoch = leases.epoch AND NOT drives.lost)");

} // namespace

QJsonObject LeasedRegister::toJson() const
{
    return {{ownerMember, owner}, {epochMember, epoch}};
}

LeasedRegister LeasedRegister::fromJson(const QString& registerName, const QJsonObject& json)
{
    return {registerName, json.value(ownerMember).toString(), json.value(epochMember).toInteger()};
}

QString driveNumber(const QString& told)
{
    return told.trimmed();
}

void requireOwner(PostgresConnection& connection, const LeasedRegister& lease, const QString& drive)
{
    const QString number = driveNumber(drive);
    QVariantList values{lease.registerName, lease.owner, lease.epoch};
    if (!number.isEmpty())
        values.append(number);
    // Who takes the register over waits for the end of this; whoever renews the lease does not.
    const bool isOwner = connection
                             .value(QStringLiteral("SELECT 1 FROM leases WHERE register = ? AND owner = ? "
                                                   "AND epoch = ?%1 FOR KEY SHARE")
                                        .arg(number.isEmpty() ? QString() : holdsDrive),
                                 values)
                             .isValid();
    if (isOwner)
        return;
    if (number.isEmpty())
        throw JournalError(tr("journal %1: the register %2 has another owner by now")
                               .arg(connection.place().shown(), lease.registerName));
    requireOwner(connection, lease);
    throw RegisterTaken(tr("the register %1 is not known to have fiscal drive %2 for itself")
                            .arg(lease.registerName, number));
}

} // namespace sale
