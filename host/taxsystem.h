#pragma once

#include "frhost_export.h"

#include <QString>

namespace hw::fr::common {

/// Tax systems as bits of the registration's mask (tag 1062); a receipt carries one of them (tag 1055).
enum TaxSystemType : int {
    TaxSystemNone = 0,
    TaxSystemGeneral = 1,
    TaxSystemSimplifiedIncome = 2,
    TaxSystemSimplifiedIncomeOutcome = 4,
    TaxSystemImputedIncome = 8,
    TaxSystemAgricultural = 16,
    TaxSystemPatent = 32
};

/// Texts of the tax systems.
class FRHOST_EXPORT TaxSystem
{
public:
    /// The short name used on receipts, "ОСН" and so on; a text of its own for a value that is none of them.
    static QString getDescription(TaxSystemType type);
};

} // namespace hw::fr::common
