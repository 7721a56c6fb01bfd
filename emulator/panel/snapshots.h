#pragma once

#include <QStringList>

namespace emulator::panel {

/// Kept states of a register.
class Snapshots
{
public:
    Snapshots() = default;
    virtual ~Snapshots() = default;
    Snapshots(const Snapshots&) = delete;
    Snapshots& operator=(const Snapshots&) = delete;

    virtual QStringList names() const = 0;
    /// One of that name is replaced. Throws MemoryError.
    virtual void keep(const QString& name) = 0;
    /// Throws MemoryError.
    virtual void remove(const QString& name) = 0;
    /// Throws MemoryError, ForeignState when it is one of another register.
    virtual void restore(const QString& name) = 0;
    /// The register as it left the factory, with that fiscal drive. Throws MemoryError.
    virtual void reset(const QString& driveNumber) = 0;
};

} // namespace emulator::panel
