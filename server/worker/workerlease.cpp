#include "worker/workerlease.h"

#include "worker/leaseover.h"

#include "postgres/registerleases.h"

namespace frserver {

void WorkerLease::take(const QJsonObject& lease)
{
    if (!lease.isEmpty())
        m_lease = lease;
}

void WorkerLease::require() const
{
    if (m_lease.isEmpty())
        return;
    m_look();
    if (m_lease.value(QStringLiteral("until")).toInteger() <= sale::RegisterLeases::timeSinceBoot().count())
        throw LeaseOver();
}

std::optional<sale::LeasedRegister> WorkerLease::of(const QString& registerName) const
{
    if (m_lease.isEmpty())
        return std::nullopt;
    return sale::LeasedRegister::fromJson(registerName, m_lease);
}

} // namespace frserver
