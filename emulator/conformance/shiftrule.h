#pragma once

#include "conformance/hostrule.h"

namespace emulator {

class Register;

/// A shift is closed before it has lasted for 24 hours.
class ShiftRule : public HostRule
{
public:
    explicit ShiftRule(const Register& device)
        : m_device(device)
    {
    }

    QString kind() const override { return QStringLiteral("shift-too-long"); }
    std::optional<QString> look(const Exchange& exchange) override;

private:
    const Register& m_device;
};

} // namespace emulator
