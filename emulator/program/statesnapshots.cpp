#include "program/statesnapshots.h"

#include "memory/memoryerror.h"

StateSnapshots::StateSnapshots(std::unique_ptr<emulator::Memory>& memory, emulator::Register& device,
    const QString& folder, qint64 sourceAhead)
    : m_memory(memory)
    , m_device(device)
    , m_folder(folder)
    , m_sourceAhead(sourceAhead)
    , m_factory(device.snapshot())
{
}

void StateSnapshots::reopen(std::unique_ptr<emulator::StateFolder> folder)
{
    m_memory = std::make_unique<emulator::Memory>(std::move(folder));
    m_memory->setSourceAhead(m_sourceAhead);
}

template <typename Work>
void StateSnapshots::between(Work work)
{
    m_memory.reset();
    auto folder = std::make_unique<emulator::StateFolder>(m_folder);
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
    between([&name](const emulator::StateFolder& folder) { folder.restoreSnapshot(name); });
    m_memory->load(m_device, m_sourceAhead);
}

void StateSnapshots::reset()
{
    between([](const emulator::StateFolder& folder) { folder.removeState(); });
    m_device.restore(m_factory);
}
