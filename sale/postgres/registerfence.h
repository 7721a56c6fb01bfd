#pragma once

#include "postgres/leasedregister.h"

#include <functional>

namespace sale {

class PostgresConnection;

/// Keeps those who had a register before away from it: the lease alone keeps them from the table, and one
/// that was stopped just before it would have sent something sends it when it goes on. All operations throw
/// JournalError.
class RegisterFence
{
public:
    /// The connection must outlive it.
    RegisterFence(PostgresConnection& connection, const LeasedRegister& lease);

    /// To be done before the line is opened: this process is known to have it from then on, and those of this
    /// machine that had it have ended. One that is at work is left a moment to come to its end, one that is
    /// stopped is killed. False when there is one that cannot be ended. The callback runs in waits. Where the
    /// line does not end with its process, what this one has sent may come behind it, unless it leaves.
    bool enter(const std::function<void()>& whileWaiting, bool doesLineEnd = true);
    /// The register at the line has that fiscal drive, and is nobody else's from now on, whatever others call
    /// it. Throws RegisterTaken when one of them is at work on it. See WorkedDrives::hold for the address.
    void takeDrive(const QString& drive, const QString& address = {});
    /// Throws RegisterTaken when somebody else has taken that drive.
    void requireFree(const QString& drive) const;
    /// Before the line to that address is opened, which may take it from whoever has it: see
    /// WorkedDrives::requireFreeAddress.
    void requireFreeAddress(const QString& address, const QString& lastDrive) const;
    /// The register has answered on this line, and answers on no other one any more.
    void hasLineAlone();
    /// The line is closed, and nothing is written to it any more.
    void leave();
    /// The same of one that has failed: see WorkedDrives::lose.
    void loseLine();

private:
    PostgresConnection& m_connection;
    const LeasedRegister m_lease;
};

} // namespace sale
