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
    /// has ended has none from then on. An empty drive is nobody's. The address in the network is that of the
    /// line, empty for one that ends at this machine. Throws RegisterTaken.
    void hold(const QString& drive, const LeasedRegister& lease, const QString& address = {});
    /// The same for a program that has no lease, makes its document and ends: it gets one, for two minutes.
    /// Nothing where this process holds the drive already. It gets none that a lost line has left either.
    std::optional<LeasedRegister> holdForProgram(const QString& drive, const QString& address = {});
    /// For as long again; nothing when it was taken over.
    void renewForProgram(const LeasedRegister& lease);
    /// Throws RegisterTaken while another lease holds the drive.
    void requireFree(const QString& drive, const LeasedRegister& lease) const;
    /// For a program, before it opens the line. Throws RegisterTaken while somebody on another machine holds
    /// a drive at that address, or the one that was met there a moment ago: of this machine's programs one
    /// has the port.
    void requireFreeAddress(const QString& address) const;
    /// The same for an owner, to which a lost line is no hindrance. Its register had that drive last, as far
    /// as it is known: where a service holds another one, networks of their own may have one address.
    void requireFreeAddress(
        const QString& address, const LeasedRegister& lease, const QString& lastDrive) const;
    /// The drive that is somebody else's was met there.
    void noteMet(const QString& drive, const QString& address);
    /// The line is closed, and the register given up.
    void leave(const LeasedRegister& lease);
    /// The line is closed, since it has failed: another lease may have the drive, and no program, whose
    /// coming may be what it has failed of.
    void lose(const LeasedRegister& lease);
    /// That of holdForProgram.
    void leaveForProgram(const LeasedRegister& lease);
    /// Forgets programs that went without leave.
    void tidy();

private:
    struct Holder
    {
        /// Nobody has to wait for the end of a lease whose owner is known to be gone.
        bool isThere() const { return isRunning && process.fate() != ProcessIdentity::Fate::Ended; }
        bool isAtWork() const { return isThere() && !isLost; }

        QString drive;
        QString registerName;
        bool isRunning = false;
        bool isLost = false;
        ProcessIdentity process;
        QString host;
    };
    std::optional<Holder> holderWhere(const QString& words, const QVariantList& values) const;
    /// With what is added to the question.
    std::optional<Holder> holderOf(const QString& drive, const QString& words = {}) const;
    void lock(const QString& drive);
    void take(const QString& drive, const LeasedRegister& lease, const QString& address);
    void end(const Holder& holder);
    /// The words are added to the question.
    void requireNobodyAt(
        const QString& address, const QString& words = {}, const QVariantList& values = {}) const;
    [[noreturn]] static void refuse(const Holder& holder);

    PostgresConnection& m_connection;
};

} // namespace sale
