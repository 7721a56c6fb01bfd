// How it comes to its line and register, and leaves them, where others may be at them, too.

#include "worker/workersession.h"

#include "worker/drivehistory.h"
#include "worker/driveproblem.h"

#include "abstractfrdriver.h"
#include "connectionerror.h"
#include "journalerror.h"
#include "portname.h"
#include "registerstart.h"
#include "registertaken.h"
#include "wrongregister.h"

#include <utility>

namespace frserver {

namespace {

/// A worker before this one may still be finishing its document.
constexpr int portWaitSeconds = 10;

} // namespace

void WorkerSession::connect()
{
    if (m_connection)
        return;
    enter();
    devices::ConnectionSettings settings;
    settings.port = m_settings.port;
    settings.protocol = receipt::protocolName(m_settings.protocol);
    settings.plugins = m_settings.plugins;
    settings.waitSeconds = portWaitSeconds;
    settings.observer = &m_observer;
    settings.waitCallback = [this] {
        if (!m_isMaking)
            m_waitCallback();
    };
    m_connection.emplace(settings);
}

QJsonObject WorkerSession::close()
{
    const bool isLeft = leaveRegister(Leaving::Register);
    // Whoever has the line closed may put another register there.
    m_takenDrive.clear();
    return {{QStringLiteral("left"), isLeft}};
}

bool WorkerSession::leaveRegister(Leaving how)
{
    m_desk.reset();
    m_connection.reset();
    return leaveLine(how);
}

/// Before the port is opened, and also before its lock is waited for: that may be the former owner's.
void WorkerSession::enter()
{
    journal();
    std::optional<sale::RegisterFence> fence = m_journal->fence();
    if (!fence)
        return;
    fence->requireFree(m_takenDrive);
    if (const QString address = devices::networkAddress(m_settings.port); !address.isEmpty())
        fence->requireFreeAddress(address, lastDrive(journal(), m_settings.name));
    m_hasEntered = true;
    // A network may have what it was given, however the sender ended.
    const bool doesLineEnd = m_settings.isExclusive || !devices::isTcpName(m_settings.port);
    if (!fence->enter(m_waitCallback, doesLineEnd))
        throw devices::ConnectionError(devices::ConnectionError::Busy,
            QStringLiteral("a worker that had %1 before cannot be ended").arg(m_settings.name));
    m_lease.require();
}

bool WorkerSession::leaveLine(Leaving how)
{
    // A register whose line was lost before may be given up now.
    const bool hadLine = std::exchange(m_hasEntered, false);
    if (!m_journal || (how == Leaving::Line && !hadLine))
        return true;
    std::optional<sale::RegisterFence> fence = m_journal->fence();
    if (!fence)
        return true;
    try {
        how == Leaving::Line ? fence->loseLine() : fence->leave();
        return true;
    } catch (const sale::JournalError&) {
        // The next one of this machine sees that this process has ended.
        return false;
    }
}

void WorkerSession::meetRegister(const sale::RegisterLine& line)
{
    sale::connectRegister(m_connection->driver(), line);
    std::optional<sale::RegisterFence> fence = m_journal->fence();
    // Such a register drops the connection that it had before.
    if (fence && m_settings.isExclusive && devices::isTcpName(m_settings.port))
        fence->hasLineAlone();
}

WorkerSession::Leaving WorkerSession::leavingOfCaught()
{
    try {
        throw;
    } catch (const sale::RegisterTaken&) {
        return Leaving::Register;
    } catch (const sale::WrongRegister&) {
        return Leaving::Register;
    } catch (const DriveProblem&) {
        return Leaving::Register;
    } catch (...) {
        return Leaving::Line;
    }
}

/// Others may have the register under another name.
void WorkerSession::takeDrive()
{
    std::optional<sale::RegisterFence> fence = m_journal->fence();
    if (!fence)
        return;
    m_takenDrive = m_drive;
    try {
        fence->takeDrive(m_drive, devices::networkAddress(m_settings.port));
    } catch (const sale::JournalError&) {
        leaveRegister(leavingOfCaught());
        throw;
    }
    m_takenDrive.clear();
}

} // namespace frserver
