#pragma once

#include "api/pool.h"
#include "api/till.h"

#include <map>
#include <set>

namespace frserver {

/// The registers and pools that there are, and which of them go together.
class WaitingPlaces
{
public:
    void add(Till& till) { m_tills[till.settings().name] = &till; }
    void add(Pool& pool) { m_pools[pool.settings().name] = &pool; }
    /// The pools of a register are those that it tells of now.
    void noteMember(const QString& registerName, const QJsonObject& view);

    const std::map<QString, Till*>& tills() const { return m_tills; }
    const std::map<QString, Pool*>& pools() const { return m_pools; }
    /// @name Null when there is none of that name
    /// @{
    Till* till(const QString& name) const;
    Pool* pool(const QString& name) const;
    /// As Place has it.
    WaitingPlace* at(const QString& place) const;
    /// @}
    /// All that serve it, also those of other services that tell of themselves.
    QStringList registersOf(const Pool& pool) const;

private:
    std::map<QString, Till*> m_tills;
    std::map<QString, Pool*> m_pools;
    /// Who serves each pool, as the registers say.
    std::map<QString, std::set<QString>> m_members;
};

} // namespace frserver
