#include "settlement.h"

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "salejournal.h"

namespace frctl {

DriveMark noteDrive(AbstractFrDriver& driver)
{
    const FnStatusInfo status = driver.getFnInfo().fnStatus;
    return {status.fnNumber, status.lastFdNumber};
}

DocumentVerdict settle(AbstractFrDriver& driver, const DriveMark& before)
{
    const DocumentVerdict verdict = verdictOf(before, noteDrive(driver));
    if (verdict.outcome != DocumentOutcome::NotIssued)
        return verdict;
    driver.init();
    return verdictOf(before, noteDrive(driver));
}

std::optional<DocumentVerdict> settleAfterFailure(AbstractFrDriver& driver, const DriveMark& before)
{
    try {
        driver.connect();
        return settle(driver, before);
    } catch (const BasicException&) {
        return std::nullopt;
    }
}

QList<SettledSale> settlePendingSales(AbstractFrDriver& driver, SaleJournal& journal)
{
    QList<SettledSale> settled;
    const QList<SaleRecord> pending = journal.pending();
    if (pending.isEmpty())
        return settled;
    const QString drive = noteDrive(driver).drive;
    for (const SaleRecord& sale : pending) {
        if (sale.before.drive != drive)
            continue;
        const DocumentVerdict verdict = settle(driver, sale.before);
        journal.settle(sale.id, verdict);
        settled.append({sale.id, verdict});
    }
    return settled;
}

} // namespace frctl
