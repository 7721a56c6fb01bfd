#include "postgres/registerfence.h"

#include "postgres/postgresconnection.h"
#include "postgres/workeddrives.h"
#include "postgres/workertable.h"

#include <QElapsedTimer>

#include <algorithm>

namespace sale {

namespace {

/// A document takes seconds, and one that was broken off is a receipt that was not issued.
constexpr int endingPatienceMs = 10'000;
constexpr int sliceMs = 50;
/// Behind SIGKILL.
constexpr int longestEndMs = 5'000;

bool end(const ProcessIdentity& process, const std::function<void()>& whileWaiting)
{
    QElapsedTimer timer;
    timer.start();
    while (!process.isFrozen() && !timer.hasExpired(endingPatienceMs)) {
        if (process.waitForEnd(sliceMs))
            return true;
        whileWaiting();
    }
    return process.kill() && process.waitForEnd(longestEndMs);
}

} // namespace

RegisterFence::RegisterFence(PostgresConnection& connection, const LeasedRegister& lease)
    : m_connection(connection)
    , m_lease(lease)
{
}

bool RegisterFence::enter(const std::function<void()>& whileWaiting, bool doesLineEnd)
{
    WorkerTable workers(m_connection);
    QList<WorkerTable::Row> others;
    m_connection.together([&] {
        // Nobody who has lost the register comes behind whoever has it now.
        requireOwner(m_connection, m_lease);
        workers.add(m_lease, !doesLineEnd);
        others = workers.others(m_lease.registerName);
    });
    return std::all_of(others.cbegin(), others.cend(), [&](const WorkerTable::Row& other) {
        const ProcessIdentity& process = other.process;
        // A program that owns nothing is a person's, and is waited for at the port.
        if (other.epoch == 0 || other.wasKilled || process.fate() == ProcessIdentity::Fate::Unseen)
            return true;
        const bool hasEnded = end(process, whileWaiting);
        if (hasEnded)
            workers.noteEnded(m_lease.registerName, process);
        return hasEnded;
    });
}

void RegisterFence::takeDrive(const QString& drive, const QString& address)
{
    WorkedDrives(m_connection).hold(drive, m_lease, address);
}

void RegisterFence::requireFree(const QString& drive) const
{
    WorkedDrives(m_connection).requireFree(drive, m_lease);
}

void RegisterFence::requireFreeAddress(const QString& address, const QString& lastDrive) const
{
    WorkedDrives(m_connection).requireFreeAddress(address, m_lease, lastDrive);
}

void RegisterFence::hasLineAlone()
{
    WorkerTable(m_connection).removeFormer(m_lease);
}

void RegisterFence::leave()
{
    WorkedDrives(m_connection).leave(m_lease);
    WorkerTable(m_connection).remove(m_lease.registerName, ProcessIdentity::own());
}

void RegisterFence::loseLine()
{
    WorkedDrives(m_connection).lose(m_lease);
    WorkerTable(m_connection).remove(m_lease.registerName, ProcessIdentity::own());
}

} // namespace sale
