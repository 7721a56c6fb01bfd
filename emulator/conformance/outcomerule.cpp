#include "conformance/outcomerule.h"

#include "register/register.h"

namespace emulator {

std::optional<QString> OutcomeRule::look(const Exchange& exchange)
{
    if (exchange.isEarly && m_closed != 0)
        m_unknown = m_closed;
    const bool isAnswered = exchange.error.isEmpty() && !exchange.isOutcomeUnknown;
    if (exchange.role == ExchangeRole::Asking && isAnswered)
        m_unknown = 0;
    const bool isClosed = isClosing(exchange);
    const int unasked = isClosed || isBeginning(exchange) ? std::exchange(m_unknown, 0) : 0;
    m_closed = isClosed ? exchange.number : 0;
    if (isClosed && exchange.isOutcomeUnknown)
        m_unknown = exchange.number;
    m_hadReceipt = m_device.document().isReceiptInWork();
    if (unasked == 0)
        return std::nullopt;
    return QStringLiteral("a receipt is %1, and nobody asked what became of that of exchange %2")
        .arg(isClosed ? QStringLiteral("closed") : QStringLiteral("begun"))
        .arg(unasked);
}

bool OutcomeRule::isClosing(const Exchange& exchange) const
{
    return exchange.role == ExchangeRole::Receipt
        || (exchange.role == ExchangeRole::Finishing && (m_hadReceipt || m_unknown != 0));
}

bool OutcomeRule::isBeginning(const Exchange& exchange) const
{
    return exchange.role == ExchangeRole::Document && m_device.document().isReceiptInWork();
}

} // namespace emulator
