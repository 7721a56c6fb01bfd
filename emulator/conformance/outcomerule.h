#pragma once

#include "conformance/hostrule.h"

namespace emulator {

class Register;

/// When a host does not know what became of a receipt, it asks before it sells again.
class OutcomeRule : public HostRule
{
public:
    explicit OutcomeRule(const Register& device)
        : m_device(device)
    {
    }

    QString kind() const override { return QStringLiteral("outcome-not-asked"); }
    std::optional<QString> look(const Exchange& exchange) override;

private:
    bool isClosing(const Exchange& exchange) const;
    bool isBeginning(const Exchange& exchange) const;

    const Register& m_device;
    /// The exchange whose receipt may be stored or not; 0 for none.
    int m_unknown = 0;
    /// The number of the last exchange when it closed a receipt, else 0.
    int m_closed = 0;
    bool m_hadReceipt = false;
};

} // namespace emulator
