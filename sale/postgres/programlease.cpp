#include "postgres/programlease.h"

#include "journalerror.h"
#include "postgres/blockedsignals.h"
#include "postgres/postgresconnection.h"
#include "postgres/workeddrives.h"

#include <condition_variable>
#include <mutex>
#include <optional>

namespace sale {

namespace {

constexpr int patienceMs = 1'000;

void renew(
    std::optional<PostgresConnection>& connection, const PostgresPlace& place, const LeasedRegister& lease)
{
    try {
        if (!connection)
            connection.emplace(place, patienceMs);
        WorkedDrives(*connection).renewForProgram(lease);
    } catch (const JournalError&) {
        // There is time for some more tries.
    }
}

} // namespace

ProgramLease::ProgramLease(
    const PostgresPlace& place, const LeasedRegister& lease, std::chrono::milliseconds period)
{
    const BlockedSignals blocked;
    m_renewing = std::jthread([place, lease, period](const std::stop_token& stop) {
        // Most programs have ended before they need it.
        std::optional<PostgresConnection> connection;
        std::mutex mutex;
        std::condition_variable_any ending;
        std::unique_lock lock(mutex);
        while (!ending.wait_for(lock, stop, period, [&stop] { return stop.stop_requested(); }))
            renew(connection, place, lease);
    });
}

} // namespace sale
