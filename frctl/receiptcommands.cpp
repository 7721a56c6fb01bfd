#include "receiptcommands.h"

#include "abstractfrdriver.h"
#include "documentguard.h"
#include "documentoutput.h"
#include "errors.h"
#include "identifiedreceipt.h"
#include "inputfile.h"
#include "money.h"
#include "receipterror.h"
#include "receiptissuer.h"
#include "receiptparser.h"

#include <memory>

namespace frctl {

namespace {

using receipt::moneyText;
using receipt::Receipt;
using receipt::ReceiptError;
using receipt::roubles;

Output issue(AbstractFrDriver& driver, const Receipt& receipt, const sale::IssueOptions& options)
{
    const sale::IssueResult result = sale::issueReceipt(driver, receipt, options);
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    return receiptOutput(result);
}

/// A sale that is done already needs no register.
Task identifiedTask(
    const Receipt& receipt, const std::shared_ptr<IdentifiedReceipt>& identified, sale::MarkReading reading)
{
    Task task;
    if (const std::optional<Output> answer = identified->answer()) {
        task.alone = [answer] { return *answer; };
        return task;
    }
    task.onRegister = [receipt, identified, reading](AbstractFrDriver& driver) {
        const std::optional<Output> answer = identified->settledAnswer();
        return answer ? *answer : issue(driver, receipt, {reading, &identified->identifiedSale()});
    };
    return task;
}

Task receiptTask(const Options& options, const Receipt& receipt, const QByteArray& text)
{
    const sale::MarkReading reading = options.markReading();
    if (options.id.isEmpty())
        return onRegister(
            [receipt, reading](AbstractFrDriver& driver) { return issue(driver, receipt, {reading}); });
    return identifiedTask(
        receipt, std::make_shared<IdentifiedReceipt>(options.journalFile, options.id, text), reading);
}

/// Runs a document that the fiscal drive does not number.
void runUnnumbered(AbstractFrDriver& driver, const sale::DocumentSteps& steps)
{
    const sale::DocumentResult result = sale::runDocument(driver, steps);
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
}

Task prepareReceipt(const Options& options, bool isReturn)
{
    const QByteArray text = readFile(options.arguments.constFirst());
    Receipt receipt = receipt::receiptFromText(text);
    if (receipt.isReturn() != isReturn)
        throw ReceiptError(QStringLiteral("type"),
            isReturn ? QStringLiteral("is no return; use the command sell")
                     : QStringLiteral("is a return; use the command refund"));
    const hw::fr::CheckType type = receipt.document.getDocumentType();
    if (!options.isHex() && type != hw::fr::CheckSale && type != hw::fr::CheckSaleReturn)
        throw Refusal(QStringLiteral("over XML the register would take this receipt for a sale"));
    const std::optional<FrUser> cashier = options.cashier.name.isEmpty() ? receipt.cashier : options.cashier;
    if (cashier)
        receipt.document.setCashierName(cashier->name);
    Task task = receiptTask(options, receipt, text);
    task.cashier = cashier;
    return task;
}

Output moveCash(AbstractFrDriver& driver, hw::fr::CheckType type, qint64 sum, bool isHex)
{
    sale::DocumentSteps steps;
    steps.open = [&] { driver.moneyCheckOpen(type, {}); };
    steps.close = [&] { driver.moneyCheckClose(roubles(sum)); };
    steps.finish = [&] { driver.moneyCheckWaitForPrint(); };
    // Over XML there is nothing to cancel: the closing request is the document.
    steps.cancelAfterClose = isHex;
    runUnnumbered(driver, steps);
    const QString text
        = type == hw::fr::CheckCashIn ? QStringLiteral("cash in: %1") : QStringLiteral("cash out: %1");
    return {{text.arg(moneyText(sum))}, {{QStringLiteral("sum"), roubles(sum)}}, ExitSuccess,
        sale::Outcome::Issued};
}

Task prepareCash(const Options& options, hw::fr::CheckType type)
{
    const QString text = options.arguments.constFirst();
    bool ok = false;
    const double value = text.toDouble(&ok);
    const std::optional<qint64> sum
        = ok && value > 0.0 && value < 1e8 ? receipt::fixedPoint(value, 2) : std::nullopt;
    if (!sum || *sum == 0)
        throw UsageError(QStringLiteral("%1: \"%2\" is not a sum as 100.50").arg(options.command, text));
    const bool isHex = options.isHex();
    return onRegister(
        [type, sum, isHex](AbstractFrDriver& driver) { return moveCash(driver, type, *sum, isHex); });
}

/// The register cuts a line that is too long, so it is continued on the next one here.
QStringList fittedLines(const QStringList& lines, unsigned width)
{
    QStringList result;
    for (const QString& line : lines) {
        qsizetype start = 0;
        do {
            result.append(width > 0 ? line.mid(start, width) : line);
            start += width;
        } while (width > 0 && start < line.size());
    }
    return result;
}

Output printText(AbstractFrDriver& driver, const QStringList& text, bool isHex)
{
    const QStringList lines = fittedLines(text, driver.getBandWidthFonts().value(EFrDriver::NormalFont));
    sale::DocumentSteps steps;
    steps.open = [&] { driver.textDocOpen(hw::fr::CheckNonFiscal); };
    steps.fill = [&] { driver.textDocPrint(lines); };
    steps.close = [&] { driver.textDocClose(); };
    steps.cancelAfterClose = isHex;
    runUnnumbered(driver, steps);
    return {{QStringLiteral("%1 lines printed").arg(lines.size())},
        {{QStringLiteral("lines"), static_cast<int>(lines.size())}}, ExitSuccess, sale::Outcome::Issued};
}

} // namespace

Task prepareSell(const Options& options)
{
    return prepareReceipt(options, false);
}

Task prepareRefund(const Options& options)
{
    return prepareReceipt(options, true);
}

Task prepareCashIn(const Options& options)
{
    return prepareCash(options, hw::fr::CheckCashIn);
}

Task prepareCashOut(const Options& options)
{
    return prepareCash(options, hw::fr::CheckCashOut);
}

Task preparePrint(const Options& options)
{
    const QStringList lines = readLines(options.arguments.constFirst());
    const bool isHex = options.isHex();
    return onRegister([lines, isHex](AbstractFrDriver& driver) { return printText(driver, lines, isHex); });
}

} // namespace frctl
