#include "documentstart.h"

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "receipt.h"

#include <algorithm>

namespace sale {

namespace {

hw::fr::common::TaxSystemType onlyTaxSystem(AbstractFrDriver& driver)
{
    const QList<hw::fr::common::TaxSystemType> registered = driver.getAllTaxSystems();
    if (registered.size() != 1)
        throw FrCommandException(
            QStringLiteral("Не указана система налогообложения: в ККТ их зарегистрировано %1")
                .arg(registered.size()));
    return registered.constFirst();
}

} // namespace

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
    using hw::fr::common::TaxSystemType;
    const auto named = std::find_if(receipt.requisites.cbegin(), receipt.requisites.cend(),
        [](const FdRequisite& requisite) { return requisite.getTag() == EFrDriver::TaxSystem; });
    // HEX takes it from the head of the receipt, XML from its requisites.
    if (named != receipt.requisites.cend()) {
        receipt.document.setTaxSystem(static_cast<TaxSystemType>(named->getSourceData().toInt()));
        return;
    }
    if (receipt.document.getTaxSystem() == hw::fr::common::TaxSystemNone)
        receipt.document.setTaxSystem(onlyTaxSystem(driver));
    receipt.requisites.append(
        FdRequisite(EFrDriver::TaxSystem, static_cast<int>(receipt.document.getTaxSystem())));
}

} // namespace sale
