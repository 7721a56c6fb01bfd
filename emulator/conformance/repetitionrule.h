#pragma once

#include "conformance/hostrule.h"

namespace emulator {

/// A receipt whose answer was lost is not stored a second time.
class RepetitionRule : public HostRule
{
public:
    QString kind() const override { return QStringLiteral("receipt-repeated"); }
    void store(const QJsonObject& document) override;
    std::optional<QString> look(const Exchange& exchange) override;

private:
    /// What was sold in this exchange, and in the last receipt before.
    QJsonObject m_stored;
    QJsonObject m_before;
    int m_beforeNumber = 0;
    bool m_isBeforeUnknown = false;
    /// No exchange came after that receipt.
    bool m_isBeforeLast = false;
};

} // namespace emulator
