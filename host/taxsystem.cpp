#include "taxsystem.h"

namespace hw::fr::common {

QString TaxSystem::getDescription(TaxSystemType type)
{
    switch (type) {
    case TaxSystemNone:
        return QStringLiteral("не указана");
    case TaxSystemGeneral:
        return QStringLiteral("ОСН");
    case TaxSystemSimplifiedIncome:
        return QStringLiteral("УСН доход");
    case TaxSystemSimplifiedIncomeOutcome:
        return QStringLiteral("УСН доход - расход");
    case TaxSystemImputedIncome:
        return QStringLiteral("ЕНВД");
    case TaxSystemAgricultural:
        return QStringLiteral("ЕСХН");
    case TaxSystemPatent:
        return QStringLiteral("Патент");
    }
    return QStringLiteral("неизвестная система налогообложения (%1)").arg(static_cast<int>(type));
}

} // namespace hw::fr::common
