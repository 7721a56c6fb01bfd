#pragma once

#include "postgres/leasedregister.h"

#include <QJsonObject>

#include <chrono>
#include <functional>
#include <optional>

namespace frserver {

/// How long the worker may work its register, as the service tells it, also while a document is made. Without
/// any there is no end.
class WorkerLease
{
public:
    /// The callback takes what has come meanwhile.
    explicit WorkerLease(const std::function<void()>& look)
        : m_look(look)
    {
    }

    /// "owner", "epoch", "until"; an empty one says nothing.
    void take(const QJsonObject& lease);
    /// Throws LeaseOver.
    void require() const;
    std::optional<sale::LeasedRegister> of(const QString& registerName) const;

private:
    std::function<void()> m_look;
    QJsonObject m_lease;
};

} // namespace frserver
