#include "conformance/paymentrule.h"

#include "register/register.h"

#include <utility>

namespace emulator {

std::optional<QString> PaymentRule::look(const Exchange&)
{
    const Payments now = m_device.document().payments;
    const Payments before = std::exchange(m_before, now);
    const bool isCashFirst = before[0] > 0 && sumOf(now) - now[0] > sumOf(before) - before[0];
    return isCashFirst ? std::optional<QString>(QStringLiteral("another payment behind cash")) : std::nullopt;
}

} // namespace emulator
