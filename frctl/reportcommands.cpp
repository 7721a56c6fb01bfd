#include "reportcommands.h"

#include "abstractfrdriver.h"
#include "documentstart.h"
#include "errors.h"
#include "shift.h"
#include "witnesseddocument.h"

namespace frctl {

namespace {

Output printed(const QString& what, const QJsonObject& fiscalData = {})
{
    Output output{{what + QStringLiteral(" printed")}, {{QStringLiteral("printed"), true}}};
    if (!fiscalData.isEmpty())
        output.json.insert(QStringLiteral("fiscalData"), fiscalData);
    return output;
}

Output xReport(AbstractFrDriver& driver, const FrUser& cashier)
{
    sale::startDocument(driver, cashier);
    return printed(QStringLiteral("X report"), driver.xReport());
}

Output zReport(AbstractFrDriver& driver, const sale::DocumentOptions& document)
{
    // The drivers say it in their log only.
    if (!isShiftOpen(driver))
        return {{QStringLiteral("the shift was closed already")}, {{QStringLiteral("closed"), false}}};
    QJsonObject fiscalData;
    const sale::Verdict verdict = issueNumbered(
        driver, document, sale::DocumentKind::ShiftClosing, [&] { fiscalData = driver.zReport(); });
    Output output{{QStringLiteral("shift closed")}, {{QStringLiteral("closed"), true}}};
    if (!fiscalData.isEmpty())
        output.json.insert(QStringLiteral("fiscalData"), fiscalData);
    return withVerdict(output, verdict);
}

Output accountingReport(AbstractFrDriver& driver, const sale::DocumentOptions& document)
{
    const sale::Verdict verdict
        = issueNumbered(driver, document, sale::DocumentKind::Report, [&] { driver.accountingReport(); });
    return withVerdict(printed(QStringLiteral("report on the state of settlements")), verdict);
}

Output printDocument(AbstractFrDriver& driver, long number)
{
    driver.printFnDocument(number);
    Output output = printed(QStringLiteral("document %1").arg(number));
    output.json.insert(QStringLiteral("document"), static_cast<qint64>(number));
    return output;
}

Output printLastOfDrive(AbstractFrDriver& driver)
{
    const quint32 number = driver.getFnInfo().fnStatus.lastFdNumber;
    if (number == 0)
        throw Refusal(QStringLiteral("the fiscal drive holds no document"));
    return printDocument(driver, static_cast<long>(number));
}

Output printLast(AbstractFrDriver& driver)
{
    driver.printLastFnDocument();
    return printed(QStringLiteral("last document"));
}

} // namespace

Task prepareXReport(const Options& options)
{
    return onRegister([cashier = options.document().cashier](
                          AbstractFrDriver& driver) { return xReport(driver, cashier); });
}

Task prepareZReport(const Options& options)
{
    return onRegister(
        [document = options.document()](AbstractFrDriver& driver) { return zReport(driver, document); });
}

Task prepareAccountingReport(const Options& options)
{
    return onRegister([document = options.document()](
                          AbstractFrDriver& driver) { return accountingReport(driver, document); });
}

Task preparePrintDocument(const Options& options)
{
    const QString text = options.arguments.constFirst();
    bool ok = false;
    const quint32 number = text.toUInt(&ok);
    if (!ok || number == 0)
        throw UsageError(QStringLiteral("print-document: \"%1\" is no document number").arg(text));
    return onRegister(
        [number](AbstractFrDriver& driver) { return printDocument(driver, static_cast<long>(number)); });
}

Task preparePrintLastDocument(const Options& options)
{
    // HEX has no command for it; there the drive tells the number.
    return onRegister(options.isHex() ? printLastOfDrive : printLast);
}

} // namespace frctl
