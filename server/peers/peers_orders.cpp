// What whoever works a register is to do with it, as another service was asked.

#include "peers/peers.h"

#include "peers/peerlog.h"

#include "api/api.h"

namespace frserver {

QStringList Peers::ownRegisters() const
{
    QStringList names;
    for (const auto& [name, till] : m_tills) {
        if (till->isOwn())
            names.append(name);
    }
    return names;
}

/// Whoever works the register now follows what its owner before has not.
void Peers::readOrders(sale::SqlConnection& connection)
{
    if (!rackboard::areOrders(connection, m_line.id()))
        return;
    for (const rackboard::Order& order : rackboard::takeOrders(connection, ownRegisters()))
        obey(order);
    for (const rackboard::Order& order : rackboard::dropOrders(connection, m_line.id()))
        dropped(order);
}

void Peers::followOrders()
{
    m_line.ask([this](sale::SqlConnection& connection) { readOrders(connection); });
}

void Peers::dropped(const rackboard::Order& order)
{
    const auto& [name, content, number] = order;
    qCWarning(peerLog).noquote() << name << "nobody has followed in time:" << rackorder::verbOf(content);
    if (rackorder::isPause(content))
        m_api.pauseDropped(name, number);
    const QString id = rackorder::settledId(content);
    const auto till = m_tills.find(name);
    if (id.isEmpty() || till == m_tills.end())
        return;
    till->second->noteAnswer(id, {number});
    m_api.lookAt(id);
}

bool Peers::isOwn(const QString& name) const
{
    const auto till = m_tills.find(name);
    return till != m_tills.end() && till->second->isOwn();
}

void Peers::obey(const rackboard::Order& order)
{
    const auto& [name, content, number] = order;
    const auto till = m_tills.find(name);
    if (till == m_tills.end() || !till->second->isHere())
        return;
    if (!till->second->mayObey(content)) {
        qCWarning(peerLog).noquote() << name
                                     << "waits for something else by now:" << rackorder::verbOf(content);
        return;
    }
    if (rackorder::isPassing(content))
        m_awaited.insert(content.value(QStringLiteral("id")).toString(), name);
    if (const QString id = rackorder::settledId(content); !id.isEmpty())
        m_asking[id].append(number);
    till->second->obey(content);
    if (!rackorder::isPause(content))
        return;
    // Told also when the register was paused already, and here, where it may have been ordered before.
    till->second->noteFollowed(number);
    m_told.remove(name);
    m_changed.insert(name);
    m_api.registerChanged(name);
}

} // namespace frserver
