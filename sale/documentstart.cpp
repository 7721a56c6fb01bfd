#include "documentstart.h"

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "receipt.h"

#include <algorithm>

namespace sale {

void startDocument(AbstractFrDriver& driver, const FrUser& cashier)
{
    if (cashier.name.isEmpty())
        throw FrCommandException(QStringLiteral("Не указан кассир"));
    driver.cashierLogin(cashier);
    // Over HEX it stays as a line that failed left it.
    driver.resetFont();
}

void completeTaxSystem(AbstractFrDriver& driver, receipt::Receipt& receipt)
{
    const bool isNamed = std::any_of(receipt.requisites.cbegin(), receipt.requisites.cend(),
        [](const FdRequisite& requisite) { return requisite.getTag() == EFrDriver::TaxSystem; });
    if (isNamed)
        return;
    const QList<hw::fr::common::TaxSystemType> registered = driver.getAllTaxSystems();
    if (registered.size() != 1)
        throw FrCommandException(
            QStringLiteral("Не указана система налогообложения: в ККТ их зарегистрировано %1")
                .arg(registered.size()));
    receipt.document.setTaxSystem(registered.constFirst());
    receipt.requisites.append(FdRequisite(EFrDriver::TaxSystem, static_cast<int>(registered.constFirst())));
}

} // namespace sale
