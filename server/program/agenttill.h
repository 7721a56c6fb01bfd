#pragma once

#include "api/till.h"
#include "rack/pooldispatch.h"
#include "rack/registeragent.h"

namespace frserver {

/// A register of the rack, for the interface.
class AgentTill : public Till
{
public:
    AgentTill(const Settings& settings, RegisterAgent& agent, const PoolDispatch& dispatch)
        : Till(settings)
        , m_agent(agent)
        , m_dispatch(dispatch)
    {
    }

    bool isHere() const override { return m_agent.isOwner(); }
    QJsonObject view() const override
    {
        QJsonObject view = m_agent.view();
        view.insert(QStringLiteral("pools"), m_dispatch.poolsOf(m_agent.name()));
        return view;
    }
    void wake() override { m_agent.wake(); }
    void setAwaited(const QString& id, bool isAwaited) override { m_agent.setAwaited(id, isAwaited); }
    void settle(const QString& id) override { m_agent.settle(id); }
    qint64 pause(const QString& by) override
    {
        m_agent.pause(by);
        return 0;
    }
    qint64 resume(const QString& /*by*/) override
    {
        m_agent.resume();
        return 0;
    }
    void accept(const QString& by, const QString& note) override { m_agent.accept(by, note); }

private:
    RegisterAgent& m_agent;
    const PoolDispatch& m_dispatch;
};

} // namespace frserver
