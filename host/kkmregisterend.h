#pragma once

#include <QList>
#include <QString>
#include <QVariant>

#include <array>

/// Registers at the end of a shift. A value that the device does not have is an invalid QVariant. Hosts read
/// the registers by position, as toList gives them. Sums are double in roubles, counts are int, names
/// QString.
struct KkmRegisterEnd
{
    /// By payment kind: cash, electronic, prepayment, credit, other consideration.
    using ByPaymentKind = std::array<QVariant, 5>;

    /// Sum of all sales of the fiscal drive.
    QVariant totalSales;
    QVariant cashInDrawer;
    QVariant shiftRevenue;
    /// Receipts of the shift and their sum.
    QVariant saleCount;
    QVariant saleSum;
    ByPaymentKind salePayments;
    QVariant reserved10;
    QVariant returnCount;
    QVariant returnSum;
    ByPaymentKind returnPayments;
    QVariant reserved18;
    /// What the device calls the kinds.
    ByPaymentKind paymentNames;
    QVariant reserved24;
    QVariant cashInSum;
    QVariant cashInCount;
    QVariant cashOutSum;
    QVariant cashOutCount;
    /// Not among the registers; empty on this family.
    QString text1;
    QString text2;

    /// The 29 registers, positions 0 to 28.
    QList<QVariant> toList() const
    {
        QList<QVariant> registers{totalSales, cashInDrawer, shiftRevenue, saleCount, saleSum};
        registers.append(QList<QVariant>(salePayments.begin(), salePayments.end()));
        registers.append({reserved10, returnCount, returnSum});
        registers.append(QList<QVariant>(returnPayments.begin(), returnPayments.end()));
        registers.append(reserved18);
        registers.append(QList<QVariant>(paymentNames.begin(), paymentNames.end()));
        registers.append({reserved24, cashInSum, cashInCount, cashOutSum, cashOutCount});
        return registers;
    }
};
