#include "conformance/hostwatch.h"

#include "conformance/outcomerule.h"
#include "conformance/paymentrule.h"
#include "conformance/repetitionrule.h"
#include "conformance/shiftrule.h"

namespace emulator {

HostWatch::HostWatch(const Register& device)
    : m_device(device)
{
    beginAnew();
}

void HostWatch::beginAnew()
{
    m_rules.clear();
    m_rules.push_back(std::make_unique<OutcomeRule>(m_device));
    m_rules.push_back(std::make_unique<RepetitionRule>());
    m_rules.push_back(std::make_unique<ShiftRule>(m_device));
    m_rules.push_back(std::make_unique<PaymentRule>(m_device));
}

void HostWatch::store(const QJsonObject& document)
{
    for (const auto& rule : m_rules)
        rule->store(document);
}

void HostWatch::note(const Exchange& exchange)
{
    constexpr qsizetype mostWarnings = 1000;
    m_record.addCommand(exchange);
    if (exchange.isRefused())
        m_record.addRefusal(exchange);
    for (const auto& rule : m_rules) {
        const std::optional<QString> warning = rule->look(exchange);
        if (warning && m_record.warnings.size() < mostWarnings)
            m_record.warnings.append({rule->kind(), *warning, exchange});
    }
}

} // namespace emulator
