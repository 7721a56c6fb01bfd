#include "register/register.h"

#include "register/judgement.h"
#include "register/printing.h"

namespace emulator {

void Register::setPowered(bool isPowered)
{
    powerCycle();
    m_parts.around.isPowered = isPowered;
}

void Register::setPaper(bool isIn)
{
    if (isIn)
        printing::renewPaper(m_parts);
    m_parts.state.paper.isIn = isIn;
}

void Register::setPaperLeft(int lines, bool quietly)
{
    m_parts.state.paper.linesLeft = lines;
    m_parts.state.paper.endsQuietly = quietly;
}

void Register::setCover(bool isOpen)
{
    m_parts.state.paper.isCoverOpen = isOpen;
    printing::printWaiting(m_parts);
}

void Register::setDrawer(bool isOpen)
{
    m_parts.state.drawer.shut();
    m_parts.state.drawer.isHeld = isOpen;
}

bool Register::setClock(const QDateTime& time)
{
    const bool isGood = judgement::time(time, m_parts) == Refusal::None;
    if (isGood)
        m_parts.clock.set(time);
    return isGood;
}

void Register::setOperatorReachable(bool reachable)
{
    m_parts.state.isOperatorReachable = reachable;
    if (reachable)
        m_parts.drive.sendAll();
}

RegisterMemory Register::memory() const
{
    return {m_parts.clock.offset(), m_parts.parameters.values(), m_parts.settings.all(),
        m_parts.drive.memory(), m_parts.state};
}

void Register::restore(const RegisterMemory& memory, const QList<StoredDocument>& documents)
{
    restoreMemory(memory);
    m_parts.drive.restore(memory.drive, documents);
}

void Register::restore(const RegisterSnapshot& snapshot)
{
    restoreMemory(snapshot.memory);
    m_parts.drive = snapshot.drive;
}

void Register::reset(const QString& driveNumber)
{
    restoreMemory(RegisterMemory());
    m_parts.drive = m_parts.newDrive(driveNumber);
}

void Register::restoreMemory(const RegisterMemory& memory)
{
    const bool isOperatorReachable = m_parts.state.isOperatorReachable;
    m_parts.clock.setOffset(memory.clockOffset);
    // One that an older version has not known is as it left the factory.
    m_parts.parameters = m_parts.factoryParameters();
    m_parts.settings = Settings(m_parts.identity.width);
    for (auto value = memory.parameters.cbegin(); value != memory.parameters.cend(); ++value)
        m_parts.parameters.set(value.key().first, value.key().second, value.value());
    for (auto value = memory.settings.cbegin(); value != memory.settings.cend(); ++value)
        m_parts.settings.set(value.key(), value.value());
    const bool isCoverOpen = m_parts.state.paper.isCoverOpen;
    m_parts.state = memory.state;
    m_parts.state.paper.isCoverOpen = isCoverOpen;
    m_parts.state.isStarted = false;
    m_parts.state.isOperatorReachable = isOperatorReachable;
}

} // namespace emulator
