#include "reportcommands.h"

#include "documentarguments.h"
#include "frctltr.h"
#include "witnesseddocument.h"

namespace frctl {

namespace {

Output printed(const QString& what, const sale::Verdict& verdict)
{
    return {{what + tr(" printed")}, {}, ExitSuccess, verdict};
}

Output xReport(sale::CashDesk& desk, const Options& options)
{
    return printed(tr("X report"), verdictOf(options, desk.xReport()));
}

Output zReport(sale::CashDesk& desk, const Options& options)
{
    const sale::Verdict verdict = verdictOf(options, desk.closeShift());
    if (verdict.outcome == sale::Outcome::None)
        return {{tr("the shift was closed already")}, {}};
    return {{tr("shift closed")}, {}, ExitSuccess, verdict};
}

Output accountingReport(sale::CashDesk& desk, const Options& options)
{
    return printed(tr("report on the state of settlements"), verdictOf(options, desk.accountingReport()));
}

Output printDocument(sale::CashDesk& desk, const Options& options, quint32 number)
{
    return printed(tr("document %1").arg(number), verdictOf(options, desk.printCopy(number)));
}

Output printLast(sale::CashDesk& desk, const Options& options)
{
    return printed(tr("last document"), verdictOf(options, desk.printLastCopy()));
}

} // namespace

Task prepareXReport(const Options& options)
{
    options.requireCashierOption();
    return onDesk([options](sale::CashDesk& desk) { return xReport(desk, options); });
}

Task prepareZReport(const Options& options)
{
    options.requireCashierOption();
    return onDesk([options](sale::CashDesk& desk) { return zReport(desk, options); });
}

Task prepareAccountingReport(const Options& options)
{
    options.requireCashierOption();
    return onDesk([options](sale::CashDesk& desk) { return accountingReport(desk, options); });
}

Task preparePrintDocument(const Options& options)
{
    const quint32 number = documentArgument(options);
    return onDesk([options, number](sale::CashDesk& desk) { return printDocument(desk, options, number); });
}

Task preparePrintLastDocument(const Options& options)
{
    return onDesk([options](sale::CashDesk& desk) { return printLast(desk, options); });
}

} // namespace frctl
