#pragma once

#include "panel/snapshots.h"
#include "register/registersnapshot.h"

#include <QMap>

namespace emulator {
class Register;
}

namespace emulator::panel {

/// Snapshots of a register without a state, which go with the program.
class VolatileSnapshots : public Snapshots
{
public:
    explicit VolatileSnapshots(Register& device)
        : m_device(device)
    {
    }

    QStringList names() const override { return m_kept.keys(); }
    void keep(const QString& name) override;
    void remove(const QString& name) override { m_kept.remove(name); }
    void restore(const QString& name) override;
    void reset(const QString& driveNumber) override;

private:
    Register& m_device;
    QMap<QString, RegisterSnapshot> m_kept;
};

} // namespace emulator::panel
