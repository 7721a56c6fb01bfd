#include "api/waitingplaces.h"

#include "api/place.h"

#include <QJsonArray>
#include <QSet>

namespace frserver {

void WaitingPlaces::noteMember(const QString& registerName, const QJsonObject& view)
{
    for (auto& [pool, names] : m_members)
        names.erase(registerName);
    const QJsonArray pools = view.value(QStringLiteral("pools")).toArray();
    for (const QJsonValue pool : pools)
        m_members[pool.toObject().value(QStringLiteral("name")).toString()].insert(registerName);
}

Till* WaitingPlaces::till(const QString& name) const
{
    const auto found = m_tills.find(name);
    return found == m_tills.end() ? nullptr : found->second;
}

Pool* WaitingPlaces::pool(const QString& name) const
{
    const auto found = m_pools.find(name);
    return found == m_pools.end() ? nullptr : found->second;
}

WaitingPlace* WaitingPlaces::at(const QString& place) const
{
    const std::optional<QString> poolName = Place::poolOf(place);
    return poolName ? static_cast<WaitingPlace*>(pool(*poolName)) : till(place);
}

QStringList WaitingPlaces::registersOf(const Pool& pool) const
{
    QStringList names = pool.settings().registers;
    const auto members = m_members.find(pool.settings().name);
    if (members == m_members.end())
        return names;
    // Each receipt that is posted asks this, of racks with hundreds of registers.
    const QSet<QString> own(names.cbegin(), names.cend());
    for (const QString& name : members->second) {
        if (!own.contains(name))
            names.append(name);
    }
    return names;
}

} // namespace frserver
