#include "conformance/shiftrule.h"

#include "register/register.h"

namespace emulator {

std::optional<QString> ShiftRule::look(const Exchange& exchange)
{
    const bool isDocument = exchange.role == ExchangeRole::Document
        || exchange.role == ExchangeRole::Finishing || exchange.role == ExchangeRole::Receipt;
    if (!isDocument || !exchange.isRefused() || !m_device.isShiftTooLong())
        return std::nullopt;
    return QStringLiteral("a document in a shift of more than 24 hours");
}

} // namespace emulator
