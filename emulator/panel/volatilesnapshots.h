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
    /// The register is as it left the factory.
    explicit VolatileSnapshots(Register& device);

    QStringList names() const override { return m_kept.keys(); }
    void keep(const QString& name) override;
    void restore(const QString& name) override;
    void reset() override;

private:
    Register& m_device;
    RegisterSnapshot m_factory;
    QMap<QString, RegisterSnapshot> m_kept;
};

} // namespace emulator::panel
