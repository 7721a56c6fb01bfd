#pragma once

#include "register/refusedrequest.h"

#include <QList>

#include <functional>

namespace emulator {

/// The refused requests of this run, the youngest at the end. Each is told to the listener once and kept.
class Refusals
{
public:
    using Listener = std::function<void(const RefusedRequest& refused)>;

    void setListener(Listener listener) { m_listener = std::move(listener); }
    void add(const RefusedRequest& refused);
    /// The youngest thousand.
    const QList<RefusedRequest>& all() const { return m_all; }
    void clear() { m_all.clear(); }

private:
    static constexpr qsizetype mostKept = 1000;

    Listener m_listener;
    QList<RefusedRequest> m_all;
};

} // namespace emulator
