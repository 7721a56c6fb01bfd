#include "conformance/repetitionrule.h"

#include <utility>

namespace emulator {

void RepetitionRule::store(const QJsonObject& document)
{
    // Only receipts have positions.
    if (!document.contains(QStringLiteral("items")))
        return;
    for (const char* const key : {"type", "items", "total"})
        m_stored[QLatin1String(key)] = document[QLatin1String(key)];
}

std::optional<QString> RepetitionRule::look(const Exchange& exchange)
{
    m_isBeforeUnknown = m_isBeforeUnknown || (exchange.isEarly && m_isBeforeLast);
    m_isBeforeLast = !m_stored.isEmpty();
    if (m_stored.isEmpty())
        return std::nullopt;
    const bool isRepeated
        = std::exchange(m_isBeforeUnknown, exchange.isOutcomeUnknown) && m_stored == m_before;
    m_before = std::exchange(m_stored, {});
    const int before = std::exchange(m_beforeNumber, exchange.number);
    if (!isRepeated)
        return std::nullopt;
    return QStringLiteral("the receipt of exchange %1 is stored once more").arg(before);
}

} // namespace emulator
