#pragma once

#include "documentkind.h"

#include <QtGlobal>

namespace sale {

/// A sum of the open shift that the register's counters and the journal have differently. Kopecks.
struct SumDifference
{
    /// Sale or SaleReturn.
    DocumentKind kind = DocumentKind::Sale;
    /// As in FrPayment.
    int payment = 0;
    qint64 inRegister = 0;
    qint64 inJournal = 0;
};

} // namespace sale
