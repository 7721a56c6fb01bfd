#pragma once

#include "postgres/leasedregister.h"
#include "postgres/processidentity.h"

#include <optional>

namespace sale {

class PostgresConnection;

/// Whose lease each register is worked by, known by its fiscal drive: one that stands in several
/// configurations under several names is one register all the same. A drive is held as long as the lease is
/// valid. All operations throw JournalError.
class WorkedDrives
{
public:
    /// The connection must outlive it.
    explicit WorkedDrives(PostgresConnection& connection)
        : m_connection(connection)
    {
    }

    /// To be called before anything is asked about documents, or sent. Whoever held the drive by a lease that
    /// has ended has none from then on. An empty drive is nobody's. Throws RegisterTaken.
    void hold(const QString& drive, const LeasedRegister& lease);
    /// The same for a program that has no lease, makes its document and ends: it gets one, for some minutes.
    /// Nothing where this process holds the drive already.
    std::optional<LeasedRegister> holdForProgram(const QString& drive);
    /// Throws RegisterTaken while another lease holds the drive.
    void requireFree(const QString& drive, const LeasedRegister& lease) const;
    /// The line is closed.
    void leave(const LeasedRegister& lease);
    /// That of holdForProgram.
    void leaveForProgram(const LeasedRegister& lease);
    /// Forgets programs that went without leave.
    void tidy();

private:
    struct Holder
    {
        bool isAtWork() const;

        QString registerName;
        bool isRunning = false;
        ProcessIdentity process;
        QString host;
    };
    /// With what is added to the question.
    std::optional<Holder> holderOf(const QString& drive, const QString& words = {}) const;
    void lock(const QString& drive);
    void take(const QString& drive, const LeasedRegister& lease);
    void end(const QString& drive, const Holder& holder);
    [[noreturn]] static void refuse(const QString& drive, const Holder& holder);

    PostgresConnection& m_connection;
};

} // namespace sale
