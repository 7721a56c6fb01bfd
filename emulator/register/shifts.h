#pragma once

#include "register/refusal.h"

namespace emulator {

struct Cashier;
struct Parts;

/// Opens and closes the shift and prints its totals.
class Shifts
{
public:
    explicit Shifts(Parts& parts)
        : m_parts(parts)
    {
    }

    Refusal open(const Cashier& cashier);
    Refusal close(const Cashier& cashier);
    Refusal printTotals(const Cashier& cashier);

private:
    Parts& m_parts;
};

} // namespace emulator
