#pragma once

/// One payment of a receipt.
struct FrPayment
{
    FrPayment() = default;
    FrPayment(int paymentKind, double paymentSum)
        : kind(paymentKind)
        , sum(paymentSum)
    {
    }

    /// Roubles, with 2 decimals when written.
    double getSum() const { return sum; }

    /// 0 cash, 1 electronic, 2 prepayment, 3 credit, 4 other consideration.
    int kind = 0;
    double sum = 0.0;
};
