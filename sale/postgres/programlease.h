#pragma once

#include "postgres/leasedregister.h"
#include "postgres/postgresplace.h"

#include <chrono>
#include <thread>

namespace sale {

/// Renews the lease of a program (WorkedDrives::holdForProgram) as long as this is there, whatever the
/// program waits for. One that stands still does not renew, and one whose lease was taken over finds that out
/// when it writes.
class ProgramLease
{
public:
    ProgramLease(const PostgresPlace& place, const LeasedRegister& lease,
        std::chrono::milliseconds period = std::chrono::seconds(30));

private:
    std::jthread m_renewing;
};

} // namespace sale
