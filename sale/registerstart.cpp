#include "registerstart.h"

#include "abstractfrdriver.h"
#include "pendingsales.h"

namespace sale {

QList<SettledSale> startRegister(
    AbstractFrDriver& driver, DocumentStore* journal, const RegisterLine& line, const QString& registerName)
{
    driver.connect();
    QList<SettledSale> settled;
    if (journal != nullptr)
        settled = settlePendingSales(driver, *journal, line, registerName);
    driver.init();
    return settled;
}

} // namespace sale
