#include "receiptcommands.h"

#include "abstractfrdriver.h"
#include "documentguard.h"
#include "errors.h"
#include "money.h"
#include "receipterror.h"
#include "receiptissuer.h"
#include "receiptparser.h"

#include <QFile>

namespace frctl {

namespace {

QByteArray readFile(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw UsageError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
    return file.readAll();
}

Task prepareReceipt(const Options& options, bool isReturn)
{
    Receipt receipt = receiptFromText(readFile(options.arguments.constFirst()));
    if (receipt.isReturn() != isReturn)
        throw ReceiptError(QStringLiteral("type"),
            isReturn ? QStringLiteral("is no return; use the command sell")
                     : QStringLiteral("is a return; use the command refund"));
    Task task;
    task.cashier = options.cashier.name.isEmpty() ? receipt.cashier : options.cashier;
    if (task.cashier)
        receipt.document.setCashierName(task.cashier->name);
    task.onRegister = [receipt](AbstractFrDriver& driver) { return issueReceipt(driver, receipt); };
    return task;
}

Output moveCash(AbstractFrDriver& driver, hw::fr::CheckType type, qint64 sum)
{
    DocumentSteps steps;
    steps.open = [&] { driver.moneyCheckOpen(type, {}); };
    steps.close = [&] { driver.moneyCheckClose(roubles(sum)); };
    steps.finish = [&] { driver.moneyCheckWaitForPrint(); };
    steps.cancelAfterClose = true;
    runDocument(driver, steps);
    const QString text
        = type == hw::fr::CheckCashIn ? QStringLiteral("cash in: %1") : QStringLiteral("cash out: %1");
    return {{text.arg(moneyText(sum))}, {{QStringLiteral("sum"), roubles(sum)}}};
}

Task prepareCash(const Options& options, hw::fr::CheckType type)
{
    const QString text = options.arguments.constFirst();
    bool ok = false;
    const double value = text.toDouble(&ok);
    const std::optional<qint64> sum = ok && value > 0.0 && value < 1e8 ? fixedPoint(value, 2) : std::nullopt;
    if (!sum || *sum == 0)
        throw UsageError(QStringLiteral("%1: \"%2\" is not a sum as 100.50").arg(options.command, text));
    Task task;
    task.onRegister = [type, sum](AbstractFrDriver& driver) { return moveCash(driver, type, *sum); };
    return task;
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

Output printText(AbstractFrDriver& driver, const QStringList& text)
{
    const QStringList lines = fittedLines(text, driver.getBandWidthFonts().value(EFrDriver::NormalFont));
    DocumentSteps steps;
    steps.open = [&] { driver.textDocOpen(hw::fr::CheckNonFiscal); };
    steps.fill = [&] { driver.textDocPrint(lines); };
    steps.close = [&] { driver.textDocClose(); };
    steps.cancelAfterClose = true;
    runDocument(driver, steps);
    return {{QStringLiteral("%1 lines printed").arg(lines.size())},
        {{QStringLiteral("lines"), static_cast<int>(lines.size())}}};
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
    QString text = QString::fromUtf8(readFile(options.arguments.constFirst()));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    const QStringList lines = text.split(QLatin1Char('\n'));
    Task task;
    task.onRegister = [lines](AbstractFrDriver& driver) { return printText(driver, lines); };
    return task;
}

} // namespace frctl
