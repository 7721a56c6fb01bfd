#include "receiptissuer.h"

#include "abstractfrdriver.h"
#include "documentguard.h"
#include "exceptions.h"
#include "identifiedsale.h"
#include "money.h"
#include "settlement.h"

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

Output describe(const Receipt& receipt, const QJsonArray& marks, const QJsonObject& fiscalData,
    const DocumentVerdict& verdict)
{
    const qint64 change = receipt.paid - receipt.total;
    Output output;
    output.lines = {QStringLiteral("receipt issued: total %1, paid %2, change %3, document %4")
                        .arg(moneyText(receipt.total), moneyText(receipt.paid), moneyText(change),
                            QString::number(verdict.number))};
    output.json = documentJson(verdict);
    output.json.insert(QStringLiteral("total"), roubles(receipt.total));
    output.json.insert(QStringLiteral("paid"), roubles(receipt.paid));
    output.json.insert(QStringLiteral("change"), roubles(change));
    if (!fiscalData.isEmpty())
        output.json.insert(QStringLiteral("fiscalData"), fiscalData);
    if (!marks.isEmpty())
        output.json.insert(QStringLiteral("marks"), marks);
    // The group separator is no character for a terminal.
    for (const auto& mark : marks)
        output.lines.append(QStringLiteral("marking code %1: %2")
                                .arg(mark.toObject()
                                         .value(QStringLiteral("markingCode"))
                                         .toString()
                                         .replace(QChar(0x1D), QStringLiteral("<GS>")))
                                .arg(mark.toObject().value(QStringLiteral("result")).toInt()));
    return output;
}

/// One receipt on its way through the register and, with an id, through the journal.
class Issue
{
public:
    Issue(AbstractFrDriver& driver, const Receipt& receipt, IdentifiedSale* sale)
        : m_driver(driver)
        , m_receipt(receipt)
        , m_sale(sale)
    {
    }

    Output run()
    {
        m_driver.openShift();
        // Before the document is opened: nothing is lost if this cannot be read or written down.
        m_before = noteDrive(m_driver);
        // The drive numbers its documents without gaps.
        if (m_before.lastDocument != 0)
            m_issued.number = m_before.lastDocument + 1;
        const QJsonArray marks = checkMarks(m_driver, m_receipt);
        writeDown();
        try {
            runDocument(m_driver, steps());
        } catch (const RegisterError& failure) {
            meetFailure(failure.verdict());
            throw;
        }
        meetSuccess();
        return describe(m_receipt, marks, m_fiscalData, m_issued);
    }

private:
    DocumentSteps steps()
    {
        DocumentSteps steps;
        steps.open = [this] { m_driver.checkOpen(m_receipt.document); };
        steps.fill = [this] { fillReceipt(m_driver, m_receipt); };
        steps.close = [this] { m_fiscalData = m_driver.checkClose(m_receipt.document); };
        steps.settle = [this] {
            m_settled = settleAfterFailure(m_driver, m_before);
            return m_settled.value_or(DocumentOutcome::Unknown);
        };
        steps.issued = m_issued;
        steps.finish = [this] {
            m_driver.checkWaitForPrint();
            if (m_receipt.hasMarkedItems())
                m_driver.clearMarkingCodes();
        };
        return steps;
    }

    void writeDown()
    {
        try {
            if (m_sale != nullptr)
                m_sale->begin(m_before);
        } catch (const HostError&) {
            forgetMarks(m_driver, m_receipt);
            throw;
        }
    }

    void meetFailure(const DocumentVerdict& verdict)
    {
        const bool isUndone = verdict.outcome == DocumentOutcome::Cancelled
            || verdict.outcome == DocumentOutcome::None || verdict.outcome == DocumentOutcome::NotIssued;
        if (isUndone)
            forgetMarks(m_driver, m_receipt);
        // What could not be found out now is left to the next run.
        const bool isSure = isUndone || verdict.outcome == DocumentOutcome::Issued || m_settled;
        if (m_sale == nullptr || !isSure)
            return;
        try {
            m_sale->settle(isUndone ? DocumentVerdict(DocumentOutcome::NotIssued) : verdict);
        } catch (const HostError&) {
            // The failure that led here is the one to report; without an outcome the sale is settled later.
        }
    }

    void meetSuccess()
    {
        try {
            if (m_sale != nullptr)
                m_sale->settle(m_issued);
        } catch (const HostError& error) {
            throw RegisterError(QString::fromUtf8(error.what()), QStringLiteral("HostError"), m_issued);
        }
    }

    AbstractFrDriver& m_driver;
    const Receipt& m_receipt;
    IdentifiedSale* const m_sale;
    DriveMark m_before;
    DocumentVerdict m_issued = DocumentOutcome::Issued;
    std::optional<DocumentVerdict> m_settled;
    QJsonObject m_fiscalData;
};

} // namespace

Output issueReceipt(AbstractFrDriver& driver, const Receipt& receipt, IdentifiedSale* sale)
{
    return Issue(driver, receipt, sale).run();
}

} // namespace frctl
