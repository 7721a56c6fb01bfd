#include "receiptissuer.h"

#include "abstractfrdriver.h"
#include "documentguard.h"
#include "exceptions.h"
#include "money.h"

#include <QJsonArray>

namespace frctl {

namespace {

/// Tag 2003: what is to become of the goods.
int plannedStatus(const FrPosition& position, bool isReturn)
{
    const bool isPiece = position.getFrUnit() == 0;
    if (isReturn)
        return isPiece ? 3 : 4;
    return isPiece ? 1 : 2;
}

QJsonArray askAboutMarks(AbstractFrDriver& driver, const Receipt& receipt)
{
    QJsonArray results;
    for (const ReceiptItem& item : receipt.items) {
        const FrPosition& position = item.position;
        if (position.getMarkingCode().isEmpty())
            continue;
        MarkedPosition marked;
        marked.status = plannedStatus(position, receipt.isReturn());
        marked.markingCode = position.getMarkingCode();
        marked.quantity = position.getCount();
        marked.measureUnit = position.getFrUnit();
        results.append(QJsonObject{{QStringLiteral("markingCode"), marked.markingCode},
            {QStringLiteral("result"), driver.checkMarkingCode(marked, false)}});
    }
    return results;
}

/// After a failure: the fiscal drive must not keep codes of a receipt that never came about.
void forgetMarks(AbstractFrDriver& driver, const Receipt& receipt)
{
    try {
        if (receipt.hasMarkedItems())
            driver.clearMarkingCodes();
    } catch (const BasicException&) {
        // The failure that led here is the one to report.
    }
}

QJsonArray checkMarks(AbstractFrDriver& driver, const Receipt& receipt)
{
    try {
        return askAboutMarks(driver, receipt);
    } catch (const FrNoConnectionException&) {
        throw;
    } catch (const BasicException&) {
        forgetMarks(driver, receipt);
        throw;
    }
}

void addItem(AbstractFrDriver& driver, const ReceiptItem& item)
{
    if (item.kind == ReceiptItem::BarcodeItem) {
        driver.barcodePrint(item.barcode);
    } else if (item.kind == ReceiptItem::Text) {
        if (item.font != EFrDriver::UndefinedFont)
            driver.setFont({item.font});
        driver.checkPrint({item.text});
        if (item.font != EFrDriver::UndefinedFont)
            driver.resetFont();
    } else {
        driver.checkAddPosition(item.position);
    }
}

void fillReceipt(AbstractFrDriver& driver, const Receipt& receipt)
{
    for (const FdRequisite& requisite : receipt.requisites)
        driver.setRequisite(requisite);
    for (const ReceiptItem& item : receipt.items)
        addItem(driver, item);
    driver.checkTotal();
    for (const FrPayment& payment : receipt.payments)
        driver.checkPay(payment);
}

Output describe(const Receipt& receipt, const QJsonArray& marks, const QJsonObject& fiscalData)
{
    const qint64 change = receipt.paid - receipt.total;
    Output output;
    output.lines = {QStringLiteral("receipt issued: total %1, paid %2, change %3")
                        .arg(moneyText(receipt.total), moneyText(receipt.paid), moneyText(change))};
    output.json = {{QStringLiteral("total"), roubles(receipt.total)},
        {QStringLiteral("paid"), roubles(receipt.paid)}, {QStringLiteral("change"), roubles(change)}};
    if (!fiscalData.isEmpty())
        output.json.insert(QStringLiteral("fiscalData"), fiscalData);
    if (!marks.isEmpty())
        output.json.insert(QStringLiteral("marks"), marks);
    // The group separator is no character for a terminal.
    for (const QJsonValue& mark : marks)
        output.lines.append(QStringLiteral("marking code %1: %2")
                                .arg(mark.toObject()
                                         .value(QStringLiteral("markingCode"))
                                         .toString()
                                         .replace(QChar(0x1D), QStringLiteral("<GS>")))
                                .arg(mark.toObject().value(QStringLiteral("result")).toInt()));
    return output;
}

} // namespace

Output issueReceipt(AbstractFrDriver& driver, const Receipt& receipt)
{
    driver.openShift();
    const FiscalDocument& document = receipt.document;
    const QJsonArray marks = checkMarks(driver, receipt);
    QJsonObject fiscalData;
    DocumentSteps steps;
    steps.open = [&] { driver.checkOpen(document); };
    steps.fill = [&] { fillReceipt(driver, receipt); };
    steps.close = [&] { fiscalData = driver.checkClose(document); };
    steps.finish = [&] {
        driver.checkWaitForPrint();
        if (receipt.hasMarkedItems())
            driver.clearMarkingCodes();
    };
    try {
        runDocument(driver, steps);
    } catch (const RegisterError& failure) {
        if (failure.outcome() == DocumentOutcome::Cancelled || failure.outcome() == DocumentOutcome::None)
            forgetMarks(driver, receipt);
        throw;
    }
    return describe(receipt, marks, fiscalData);
}

} // namespace frctl
