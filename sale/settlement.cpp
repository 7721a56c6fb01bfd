#include "settlement.h"

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "salejournal.h"

namespace sale {

namespace {

// A line on which so many answers in a row differ has no number to tell.
constexpr int mostReadings = 20;

DriveMark readOnce(AbstractFrDriver& driver)
{
    const FnStatusInfo status = driver.getFnInfo().fnStatus;
    return {status.fnNumber, status.lastFdNumber};
}

} // namespace

DriveMark noteDrive(AbstractFrDriver& driver, MarkReading reading)
{
    DriveMark mark = readOnce(driver);
    if (reading == MarkReading::Once)
        return mark;
    for (int readings = 1; readings < mostReadings; ++readings) {
        const DriveMark again = readOnce(driver);
        if (again == mark)
            return mark;
        mark = again;
    }
    return {};
}

Verdict settle(AbstractFrDriver& driver, const DriveMark& before, MarkReading reading)
{
    const Verdict verdict = verdictOf(before, noteDrive(driver, reading));
    if (verdict.outcome != Outcome::NotIssued)
        return verdict;
    driver.init();
    return verdictOf(before, noteDrive(driver, reading));
}

std::optional<Verdict> settleAfterFailure(
    AbstractFrDriver& driver, const DriveMark& before, MarkReading reading)
{
    try {
        driver.connect();
        return settle(driver, before, reading);
    } catch (const BasicException&) {
        return std::nullopt;
    }
}

QList<SettledSale> settlePendingSales(AbstractFrDriver& driver, SaleJournal& journal, MarkReading reading)
{
    QList<SettledSale> settled;
    const QList<SaleRecord> pending = journal.pending();
    if (pending.isEmpty())
        return settled;
    const QString drive = noteDrive(driver, reading).drive;
    for (const SaleRecord& sale : pending) {
        if (sale.before.drive != drive)
            continue;
        const Verdict verdict = settle(driver, sale.before, reading);
        journal.settle(sale.id, verdict);
        settled.append({sale.id, verdict});
    }
    return settled;
}

} // namespace sale
