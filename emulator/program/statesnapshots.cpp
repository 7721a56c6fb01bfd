#include "program/statesnapshots.h"

#include "memory/memoryerror.h"

namespace {

emulator::MemoryError closedState()
{
    return emulator::MemoryError(QStringLiteral("it could not be opened again"));
}

} // namespace

StateSnapshots::StateSnapshots(
    std::unique_ptr<emulator::Memory>& memory, emulator::Register& device, qint64 sourceAhead)
    : m_memory(memory)
    , m_device(device)
    , m_sourceAhead(sourceAhead)
{
}

QStringList StateSnapshots::names() const
{
    return m_memory ? m_memory->folder().snapshots() : QStringList();
}

void StateSnapshots::keep(const QString& name)
{
    if (!m_memory)
        throw closedState();
    m_memory->folder().keepSnapshot(name);
}

void StateSnapshots::remove(const QString& name)
{
    if (!m_memory)
        throw closedState();
    m_memory->folder().removeSnapshot(name);
}

void StateSnapshots::reopen(std::unique_ptr<emulator::StateFolder> folder)
{
    m_memory = std::make_unique<emulator::Memory>(std::move(folder));
    m_memory->setSourceAhead(m_sourceAhead);
}

template <typename Work>
void StateSnapshots::between(Work work)
{
    if (!m_memory)
        throw closedState();
    std::unique_ptr<emulator::StateFolder> folder = emulator::Memory::close(std::move(m_memory));
    try {
        work(*folder);
    } catch (const emulator::MemoryError&) {
        reopen(std::move(folder));
        throw;
    }
    reopen(std::move(folder));
}

void StateSnapshots::restore(const QString& name)
{
    between([this, &name](
                const emulator::StateFolder& folder) { folder.restoreSnapshot(name, &m_device.identity()); });
    try {
        m_memory->load(m_device, m_sourceAhead);
    } catch (const emulator::MemoryError&) {
        // What the register has now is not to be written over what it could not read.
        m_memory.reset();
        throw;
    }
}

void StateSnapshots::reset(const QString& driveNumber)
{
    between([](const emulator::StateFolder& folder) { folder.removeState(); });
    m_device.reset(driveNumber);
}
