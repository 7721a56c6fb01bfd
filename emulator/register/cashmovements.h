#pragma once

#include "register/amounts.h"
#include "register/refusal.h"

namespace emulator {

struct Parts;

/// Cash that goes into the drawer or out of it without a receipt.
class CashMovements
{
public:
    explicit CashMovements(Parts& parts)
        : m_parts(parts)
    {
    }

    Refusal openDrawer();
    /// The sum of the open cash-in or cash-out.
    Refusal setSum(Money sum);
    Refusal close();

private:
    Parts& m_parts;
};

} // namespace emulator
