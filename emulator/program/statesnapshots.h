#pragma once

#include "memory/memory.h"
#include "panel/snapshots.h"
#include "register/register.h"

/// Snapshots in the state folder of a register that runs.
class StateSnapshots : public emulator::panel::Snapshots
{
public:
    /// The memory is the one that it has, now and later: null once
    /// its state could not be opened again, and then nothing can be kept. The source of the register's clock
    /// is so many milliseconds ahead of the computer's clock.
    StateSnapshots(std::unique_ptr<emulator::Memory>& memory, emulator::Register& device, qint64 sourceAhead);

    QStringList names() const override;
    void keep(const QString& name) override;
    void remove(const QString& name) override;
    void restore(const QString& name) override;
    void reset(const QString& driveNumber) override;

private:
    /// Does something to the folder while no memory has its state open, and opens it again.
    template <typename Work>
    void between(Work work);
    void reopen(std::unique_ptr<emulator::StateFolder> folder);

    std::unique_ptr<emulator::Memory>& m_memory;
    emulator::Register& m_device;
    qint64 m_sourceAhead;
};
