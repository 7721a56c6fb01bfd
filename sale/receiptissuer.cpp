#include "receiptissuer.h"

#include "abstractfrdriver.h"
#include "documentguard.h"
#include "documentstart.h"
#include "exceptions.h"
#include "identifiedsale.h"
#include "journalerror.h"
#include "markasking.h"
#include "shiftopening.h"
#include "soldmarks.h"
#include "witness.h"

#include <algorithm>

namespace sale {

namespace {

using receipt::Receipt;
using receipt::ReceiptItem;

/// Over XML no font is both wide and high. The width wins then: it decides how much a line holds.
EFrDriver::FontTypes fontOf(AbstractFrDriver& driver, const ReceiptItem& item)
{
    if (item.font != EFrDriver::DoubleSizeFont)
        return item.font;
    const QMap<EFrDriver::FontTypes, unsigned> widths = driver.getBandWidthFonts();
    const bool isWide = widths.value(EFrDriver::DoubleSizeFont) < widths.value(EFrDriver::NormalFont);
    return isWide ? EFrDriver::DoubleSizeFont : EFrDriver::DoubleWidthFont;
}

void addItem(AbstractFrDriver& driver, const ReceiptItem& item)
{
    if (item.kind == ReceiptItem::BarcodeItem) {
        driver.barcodePrint(item.barcode);
    } else if (item.kind == ReceiptItem::Text) {
        if (item.font != EFrDriver::UndefinedFont)
            driver.setFont({fontOf(driver, item)});
        driver.checkPrint({item.text});
        if (item.font != EFrDriver::UndefinedFont)
            driver.resetFont();
    } else {
        driver.checkAddPosition(item.position);
    }
}

/// Change comes out of the cash, so a register over HEX wants it last. Over XML the order is nothing.
QList<FrPayment> cashLast(QList<FrPayment> payments)
{
    std::stable_partition(
        payments.begin(), payments.end(), [](const FrPayment& payment) { return payment.kind != 0; });
    return payments;
}

void fillReceipt(AbstractFrDriver& driver, const Receipt& receipt)
{
    for (const FdRequisite& requisite : receipt.requisites)
        driver.setRequisite(requisite);
    for (const ReceiptItem& item : receipt.items)
        addItem(driver, item);
    driver.checkTotal();
    for (const FrPayment& payment : cashLast(receipt.payments))
        driver.checkPay(payment);
}

/// One receipt on its way through the register and, with an id, through the journal.
class Issue
{
public:
    Issue(AbstractFrDriver& driver, const Receipt& receipt, const IssueOptions& options)
        : m_driver(driver)
        , m_receipt(receipt)
        , m_options(options)
        , m_marks(markEntryOf(receipt))
        , m_witness(driver, m_options.line, movementOf(receipt))
    {
        m_result.ours = movementOf(receipt);
        m_result.total = receipt.total;
        m_result.paid = receipt.paid;
        m_result.change = receipt.paid - receipt.total;
    }

    IssueResult run()
    {
        if (isDoneOrUnknown())
            return m_result;
        try {
            prepare();
        } catch (...) {
            m_result.failure = currentFailure();
            return m_result;
        }
        const DocumentResult document = runDocument(m_driver, steps());
        m_result.verdict = document.verdict;
        m_result.failure = document.failure;
        try {
            if (document.failure)
                meetFailure();
            else
                meetSuccess();
        } catch (...) {
            m_result.failure = currentFailure();
        }
        return m_result;
    }

private:
    /// A sale that its id says is issued or may be is answered from the journal; the register is left alone.
    bool isDoneOrUnknown()
    {
        if (m_options.sale == nullptr)
            return false;
        try {
            const std::optional<StoredDocument> known = m_options.sale->known();
            answerFromJournal(m_result, known);
            // A new attempt is of this receipt, which may be another one than was not issued.
            if (m_result.isRepeated && !known->attempts.isEmpty()) {
                const AttemptStart& start = known->attempts.constLast().start;
                m_result.before = DriveMark::fromJson(start.markBefore);
                m_result.ours = Movement::fromJson(start.movement);
            }
        } catch (const JournalError&) {
            m_result.failure = currentFailure();
            return true;
        }
        return m_result.isRepeated;
    }

    /// All that comes before the document is opened: nothing is lost if it fails.
    void prepare()
    {
        const FrUser cashier = m_receipt.cashier.value_or(m_options.cashier);
        startDocument(m_driver, cashier);
        m_receipt.document.setCashierName(cashier.name);
        completeTaxSystem(m_driver, m_receipt);
        const auto openShift = [&] {
            return openShiftAhead(m_driver, {m_options.line, cashier, m_options.sale, m_options.opensShift});
        };
        m_witness.note(openShift, m_options.known);
        if (m_options.sale != nullptr)
            m_witness.compareWith(m_options.sale->store());
        m_result.before = m_witness.before();
        // Without it nobody could say afterwards what has become of the receipt.
        if (!m_result.before.isKnown())
            throw FrCommandException(QStringLiteral("Не удалось узнать номер последнего документа ФН"));
        warnOfSoldMarks();
        checkMarks();
        writeDown();
    }

    void warnOfSoldMarks()
    {
        if (m_options.sale != nullptr && !m_marks.marks.isEmpty())
            m_result.warnings += soldMarks(m_options.sale->store(), m_receipt, m_options.sale->id());
    }

    void checkMarks()
    {
        try {
            m_result.marks = askAboutMarks(m_driver, m_receipt);
            judgeMarks(m_result.marks, m_options.markPolicy, m_result.warnings);
        } catch (const FrNoConnectionException&) {
            throw;
        } catch (...) {
            forgetMarks(m_driver, m_receipt);
            throw;
        }
    }

    void writeDown()
    {
        try {
            if (m_options.sale == nullptr)
                return;
            m_options.sale->begin(m_result.before, m_marks, m_result.ours, m_result.marks);
            if (!m_result.warnings.isEmpty())
                m_options.sale->note(m_result.warnings);
        } catch (...) {
            forgetMarks(m_driver, m_receipt);
            throw;
        }
    }

    DocumentSteps steps()
    {
        DocumentSteps steps;
        steps.open = [this] { m_driver.checkOpen(m_receipt.document); };
        steps.fill = [this] { fillReceipt(m_driver, m_receipt); };
        steps.close = [this] {
            m_driver.checkClose(m_receipt.document);
            m_result.after = markAfter(m_result.before, m_result.ours);
        };
        steps.settle = [this] {
            m_settled = m_witness.afterFailure();
            return m_settled.value_or(Outcome::Unknown);
        };
        steps.issued = m_witness.issued();
        steps.finish = [this] {
            m_driver.checkWaitForPrint();
            if (m_receipt.hasMarkedItems())
                m_driver.clearMarkingCodes();
        };
        return steps;
    }

    void meetSuccess()
    {
        m_result.clock = ClockReading::behind(m_driver, m_options.line);
        writeOutcome(m_result.verdict);
    }

    void meetFailure()
    {
        const Outcome outcome = m_result.verdict.outcome;
        const bool isUndone
            = outcome == Outcome::Cancelled || outcome == Outcome::None || outcome == Outcome::NotIssued;
        m_result.isFinal = isUndone || outcome == Outcome::Issued || m_settled;
        if (isUndone)
            forgetMarks(m_driver, m_receipt);
        try {
            noteFailure();
            // What could not be found out now is left to the next run.
            if (m_result.isFinal)
                writeOutcome(m_result.verdict);
        } catch (const JournalError&) {
            // The failure that led here is the one to report; without an outcome the sale is settled later.
        }
    }

    void noteFailure()
    {
        if (m_options.sale != nullptr && m_result.failure)
            m_options.sale->note(*m_result.failure, m_result.verdict);
    }

    void writeOutcome(const Verdict& verdict)
    {
        if (m_options.sale != nullptr)
            m_options.sale->settle(verdict, m_result.after, m_result.clock.time);
    }

    AbstractFrDriver& m_driver;
    /// With the cashier and the tax system that it was given here.
    Receipt m_receipt;
    const IssueOptions m_options;
    const MarkEntry m_marks;
    Witness m_witness;
    std::optional<Verdict> m_settled;
    IssueResult m_result;
};

} // namespace

IssueResult issueReceipt(AbstractFrDriver& driver, const Receipt& receipt, const IssueOptions& options)
{
    return Issue(driver, receipt, options).run();
}

} // namespace sale
