#pragma once

/// Count and sum of the operations of one kind within the shift.
struct MoneyCounters
{
    int count = 0;
    /// Roubles.
    double sum = 0.0;
};
