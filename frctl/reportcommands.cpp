#include "reportcommands.h"

#include "abstractfrdriver.h"
#include "errors.h"
#include "shift.h"
#include "witnesseddocument.h"

namespace frctl {

namespace {

Output printed(const QString& what, const sale::Verdict& verdict)
{
    return {{what + QStringLiteral(" printed")}, {}, ExitSuccess, verdict};
}

sale::Verdict printTraceless(AbstractFrDriver& driver, const Options& options, const PlainDocument& document,
    const std::function<void()>& print)
{
    sale::DocumentSteps steps;
    steps.close = print;
    return issueTraceless(driver, options, document, steps);
}

Output xReport(AbstractFrDriver& driver, const Options& options)
{
    return printed(QStringLiteral("X report"),
        printTraceless(driver, options, {QStringLiteral("xReport")}, [&] { driver.xReport(); }));
}

Output zReport(AbstractFrDriver& driver, const Options& options)
{
    // The drivers say it in their log only.
    if (!isShiftOpen(driver))
        return {{QStringLiteral("the shift was closed already")}, {}};
    return {{QStringLiteral("shift closed")}, {}, ExitSuccess,
        issueNumbered(driver, options, {QStringLiteral("zReport")}, sale::DocumentKind::ShiftClosing,
            [&] { driver.zReport(); })};
}

Output accountingReport(AbstractFrDriver& driver, const Options& options)
{
    return printed(QStringLiteral("report on the state of settlements"),
        issueNumbered(driver, options, {QStringLiteral("accountingReport")}, sale::DocumentKind::Report,
            [&] { driver.accountingReport(); }));
}

Output printDocument(AbstractFrDriver& driver, const Options& options, long number)
{
    return printed(QStringLiteral("document %1").arg(number),
        printTraceless(driver, options,
            {QStringLiteral("copy"), {{QStringLiteral("documentNumber"), static_cast<qint64>(number)}}},
            [&] { driver.printFnDocument(number); }));
}

Output printLastOfDrive(AbstractFrDriver& driver, const Options& options)
{
    const quint32 number = driver.getFnInfo().fnStatus.lastFdNumber;
    if (number == 0)
        throw Refusal(QStringLiteral("the fiscal drive holds no document"));
    return printDocument(driver, options, static_cast<long>(number));
}

Output printLast(AbstractFrDriver& driver, const Options& options)
{
    return printed(QStringLiteral("last document"),
        printTraceless(driver, options, {QStringLiteral("copy")}, [&] { driver.printLastFnDocument(); }));
}

} // namespace

Task prepareXReport(const Options& options)
{
    options.requireCashier();
    return documentOnRegister([options](AbstractFrDriver& driver) { return xReport(driver, options); });
}

Task prepareZReport(const Options& options)
{
    options.requireCashier();
    return documentOnRegister([options](AbstractFrDriver& driver) { return zReport(driver, options); });
}

Task prepareAccountingReport(const Options& options)
{
    options.requireCashier();
    return documentOnRegister(
        [options](AbstractFrDriver& driver) { return accountingReport(driver, options); });
}

Task preparePrintDocument(const Options& options)
{
    const QString text = options.arguments.constFirst();
    bool ok = false;
    const quint32 number = text.toUInt(&ok);
    if (!ok || number == 0)
        throw UsageError(QStringLiteral("print-document: \"%1\" is no document number").arg(text));
    return documentOnRegister([options, number](AbstractFrDriver& driver) {
        return printDocument(driver, options, static_cast<long>(number));
    });
}

Task preparePrintLastDocument(const Options& options)
{
    // HEX has no command for it; there the drive tells the number.
    return documentOnRegister([options](AbstractFrDriver& driver) {
        return options.isHex() ? printLastOfDrive(driver, options) : printLast(driver, options);
    });
}

} // namespace frctl
