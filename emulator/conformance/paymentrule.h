#pragma once

#include "conformance/hostrule.h"
#include "register/payments.h"

namespace emulator {

class Register;

/// Change is given from cash, so cash is paid last, when all else has found its place in the total.
class PaymentRule : public HostRule
{
public:
    explicit PaymentRule(const Register& device)
        : m_device(device)
    {
    }

    QString kind() const override { return QStringLiteral("cash-not-last"); }
    std::optional<QString> look(const Exchange& exchange) override;

private:
    const Register& m_device;
    /// Of the document that is open.
    Payments m_before{};
};

} // namespace emulator
