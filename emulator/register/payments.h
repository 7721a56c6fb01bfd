#pragma once

#include "register/amounts.h"

#include <array>
#include <numeric>

namespace emulator {

/// Cash, electronic, prepayment, credit, other.
constexpr size_t paymentKinds = 5;
/// A sum for each kind.
using Payments = std::array<Money, paymentKinds>;

inline Money sumOf(const Payments& payments)
{
    return std::accumulate(payments.cbegin(), payments.cend(), Money{0});
}

} // namespace emulator
