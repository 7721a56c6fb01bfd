#pragma once

#include <QString>

namespace frserver {

/// What documents wait for: a register, or a pool of them.
class WaitingPlace
{
public:
    WaitingPlace() = default;
    virtual ~WaitingPlace() = default;
    WaitingPlace(const WaitingPlace&) = delete;
    WaitingPlace& operator=(const WaitingPlace&) = delete;

    /// Something was queued.
    virtual void wake() = 0;
    /// Somebody waits for the document, which goes before those that nobody waits for.
    virtual void setAwaited(const QString& id, bool isAwaited) = 0;
};

} // namespace frserver
