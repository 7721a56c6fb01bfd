#pragma once

#include "api/pool.h"
#include "rack/pooldispatch.h"

namespace frserver {

/// A pool of the rack, for the interface.
class DispatchPool : public Pool
{
public:
    DispatchPool(const Settings& settings, PoolDispatch& dispatch)
        : Pool(settings)
        , m_dispatch(dispatch)
    {
    }

    void wake() override { m_dispatch.wake(); }
    void setAwaited(const QString& id, bool isAwaited) override
    {
        m_dispatch.setAwaited(settings().name, id, isAwaited);
    }

private:
    PoolDispatch& m_dispatch;
};

} // namespace frserver
