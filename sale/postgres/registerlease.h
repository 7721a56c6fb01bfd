#pragma once

#include "postgres/leasedregister.h"
#include "postgres/postgresconnection.h"

#include <chrono>
#include <functional>
#include <optional>

namespace sale {

/// Keeps a register this process's own, among those that share the database: at most one has it at a time.
/// The database's clock tells when it ends. This process counts by a clock of its own that nobody sets and
/// that goes on while the machine sleeps, from before it asked, and stops a fifth before the end. All
/// operations throw JournalError.
class RegisterLease
{
public:
    using Clock = std::function<std::chrono::milliseconds()>;
    /// CLOCK_BOOTTIME.
    static std::chrono::milliseconds timeSinceBoot();

    RegisterLease(const PostgresPlace& place, const QString& registerName, std::chrono::milliseconds term,
        const Clock& clock = timeSinceBoot);

    /// False while it is another one's.
    bool acquire();
    /// False when it is another one's by now, or nobody's.
    bool renew();
    void release();
    /// Only then the register may be worked, and a document begun.
    bool isHeld() const;
    /// Of the last acquire that came through.
    const LeasedRegister& lease() const { return m_lease; }

private:
    static constexpr int patienceMs = 1'000;

    PostgresConnection m_connection;
    const std::chrono::milliseconds m_term;
    const Clock m_clock;
    LeasedRegister m_lease;
    std::optional<std::chrono::milliseconds> m_heldFrom;
};

} // namespace sale
