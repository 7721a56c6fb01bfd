#include "cashdesk.h"

#include "abstractfrdriver.h"
#include "currenttime.h"
#include "documentid.h"
#include "documentissuer.h"
#include "exceptions.h"
#include "identifiedsale.h"
#include "marknoting.h"
#include "mockfactory.h"
#include "money.h"
#include "receiptcheck.h"
#include "receipterror.h"
#include "receiptissuer.h"
#include "registerstart.h"
#include "review.h"
#include "shiftopening.h"
#include "textlines.h"

namespace sale {

namespace {

/// The first error, with all that is wrong as its reason.
void throwErrors(const QList<receipt::Finding>& findings)
{
    QStringList texts;
    for (const receipt::Finding& finding : findings) {
        if (finding.severity == receipt::Finding::Error)
            texts.append(finding.text());
    }
    throw receipt::ReceiptError(QString(), texts.join(QStringLiteral("; ")));
}

} // namespace

CashDesk::CashDesk(AbstractFrDriver& driver, DocumentStore& journal, const DeskOptions& options)
    : m_driver(driver)
    , m_journal(journal)
    , m_options(options)
{
}

QList<SettledSale> CashDesk::open()
{
    m_isOpen = false;
    m_isMarkOfConnection = false;
    const QList<SettledSale> settled
        = startRegister(m_driver, &m_journal, m_options.line, m_options.registerName);
    m_isOpen = true;
    return settled;
}

void CashDesk::reachRegister(const IdentifiedSale& document)
{
    // One in question is settled by that, if it was begun on this register.
    if (!m_isOpen || document.isUnsettled())
        open();
}

template <typename Result>
void CashDesk::guarded(Result& result, const std::function<void()>& work)
{
    try {
        work();
    } catch (...) {
        result.failure = currentFailure();
    }
    // Nobody knows in what state the register is then.
    if (result.failure)
        m_isOpen = false;
}

std::optional<KnownMark> CashDesk::knownMark() const
{
    const std::optional<DriveMark> mark = lastKnownMark(m_journal, m_options.registerName);
    return mark ? std::optional(KnownMark{*mark, m_isMarkOfConnection}) : std::nullopt;
}

void CashDesk::issueInto(IssueResult& result, IdentifiedSale& document, const ReceiptSource& source)
{
    const receipt::CheckedReceipt checked = source();
    if (checked.hasErrors())
        throwErrors(checked.findings);
    reachRegister(document);
    result = issueReceipt(m_driver, checked.receipt,
        {m_options.line, &document, m_options.markPolicy, knownMark(), m_options.cashier});
    result.warnings = checked.findings + result.warnings;
    m_isMarkOfConnection = !result.isRepeated && !result.failure;
}

IssueResult CashDesk::issueReceiptOf(const QString& id, const QByteArray& body, const ReceiptSource& source)
{
    IssueResult result;
    guarded(result, [&] {
        requireDocumentId(m_journal, id);
        IdentifiedSale document(
            m_journal, {id, documentKindName(DocumentKind::Sale), body, m_options.registerName});
        answerFromJournal(result, document.record());
        if (!result.isRepeated || !result.isFinal)
            issueInto(result, document, source);
    });
    result.id = id;
    return result;
}

IssueResult CashDesk::issue(const QString& id, const QByteArray& json)
{
    return issueReceiptOf(id.isEmpty() ? newDocumentId() : id, json, [&] {
        return receipt::checkedReceipt(
            json, {m_options.line.protocol, MockFactory<CurrentTime>::create()->getCurrentDateTime().date()});
    });
}

IssueResult CashDesk::issue(const QString& id, const receipt::Receipt& receipt, const QByteArray& body)
{
    return issueReceiptOf(id.isEmpty() ? newDocumentId() : id, body, [&] {
        return receipt::CheckedReceipt{receipt, {}};
    });
}

DocumentRequest CashDesk::requestOf(const QString& id, const QString& kind, const QJsonObject& details) const
{
    return plainRequest(id, kind, details, m_options.registerName);
}

DocumentResult CashDesk::make(const DocumentRequest& request, const Work& work)
{
    DocumentResult result;
    guarded(result, [&] {
        requireDocumentId(m_journal, request.id);
        IdentifiedSale document(m_journal, request);
        answerFromJournal(result, document.record());
        if (result.isRepeated && result.isFinal)
            return;
        reachRegister(document);
        answerFromJournal(result, document.record());
        if (!result.isRepeated)
            result = work(document);
    });
    m_isMarkOfConnection = false;
    result.id = request.id;
    return result;
}

DocumentResult CashDesk::makeNumbered(
    const DocumentRequest& request, const Movement& ours, const DocumentSteps& steps)
{
    return make(request, [&](IdentifiedSale& document) {
        return issueDocument(m_driver, ours, steps, {m_options.line, m_options.cashier, &document});
    });
}

DocumentResult CashDesk::makeTraceless(const DocumentRequest& request, const DocumentSteps& steps)
{
    return make(request, [&](IdentifiedSale& document) {
        return issueTraceless(m_driver, steps, {m_options.line, m_options.cashier, &document});
    });
}

DocumentResult CashDesk::moveCash(DocumentKind kind, qint64 kopecks, const QString& id)
{
    const double sum = receipt::roubles(kopecks);
    DocumentSteps steps;
    steps.open = [&] {
        m_driver.moneyCheckOpen(
            kind == DocumentKind::CashIn ? hw::fr::CheckCashIn : hw::fr::CheckCashOut, {});
    };
    steps.close = [&] { m_driver.moneyCheckClose(sum); };
    steps.finish = [&] { m_driver.moneyCheckWaitForPrint(); };
    return makeNumbered(
        requestOf(id, documentKindName(kind), {{QStringLiteral("sum"), sum}}), {kind, {}, kopecks}, steps);
}

DocumentResult CashDesk::cashIn(qint64 kopecks, const QString& id)
{
    return moveCash(DocumentKind::CashIn, kopecks, id);
}

DocumentResult CashDesk::cashOut(qint64 kopecks, const QString& id)
{
    return moveCash(DocumentKind::CashOut, kopecks, id);
}

DocumentResult CashDesk::changeShift(
    const QString& name, DocumentKind kind, bool isToBeOpen, const std::function<void()>& change)
{
    DocumentResult result;
    bool isNeeded = false;
    guarded(result, [&] {
        if (!m_isOpen)
            open();
        isNeeded = isShiftOpen(m_driver, m_options.line) != isToBeOpen;
    });
    if (result.failure || !isNeeded)
        return result;
    DocumentSteps steps;
    steps.close = change;
    return makeNumbered(requestOf({}, name), {kind}, steps);
}

DocumentResult CashDesk::openShift()
{
    return changeShift(documentKindName(DocumentKind::ShiftOpening), DocumentKind::ShiftOpening, true,
        [this] { m_driver.openShift(); });
}

DocumentResult CashDesk::closeShift()
{
    // The drivers say in their log alone that it was closed.
    return changeShift(
        QStringLiteral("zReport"), DocumentKind::ShiftClosing, false, [this] { m_driver.zReport(); });
}

DocumentResult CashDesk::accountingReport()
{
    return issueReport(
        QStringLiteral("accountingReport"), {}, {.close = [this] { m_driver.accountingReport(); }});
}

DocumentResult CashDesk::issueReport(
    const QString& kind, const QJsonObject& details, const DocumentSteps& steps)
{
    return makeNumbered(requestOf({}, kind, details), {DocumentKind::Report}, steps);
}

DocumentResult CashDesk::xReport()
{
    return makeTraceless(requestOf({}, QStringLiteral("xReport")), {.close = [this] { m_driver.xReport(); }});
}

DocumentResult CashDesk::printText(const QStringList& lines)
{
    DocumentSteps steps;
    QStringList fitted;
    steps.open = [&] {
        m_driver.resetFont();
        fitted = fittedLines(lines, m_driver.getBandWidthFonts().value(EFrDriver::NormalFont));
        m_driver.textDocOpen(hw::fr::CheckNonFiscal);
    };
    steps.fill = [&] { m_driver.textDocPrint(fitted); };
    steps.close = [&] { m_driver.textDocClose(); };
    // Over XML nothing can be cancelled.
    steps.cancelAfterClose = m_options.line.isChecked();
    return makeTraceless(
        requestOf({}, QStringLiteral("text"), {{QStringLiteral("lines"), static_cast<int>(lines.size())}}),
        steps);
}

DocumentResult CashDesk::printCopy(quint32 documentNumber)
{
    const auto number = static_cast<qint64>(documentNumber);
    return makeTraceless(requestOf({}, QStringLiteral("copy"), {{QStringLiteral("documentNumber"), number}}),
        {.close = [&] { m_driver.printFnDocument(static_cast<long>(number)); }});
}

DocumentResult CashDesk::printLastCopy()
{
    return makeTraceless(requestOf({}, QStringLiteral("copy")), {.close = [this] {
        // HEX has no command for it; there the drive tells the number.
        if (!m_options.line.isChecked())
            m_driver.printLastFnDocument();
        else if (const quint32 number = m_driver.getFnInfo().fnStatus.lastFdNumber)
            m_driver.printFnDocument(static_cast<long>(number));
        else
            throw FrCommandException(QStringLiteral("В ФН нет документов"));
    }});
}

DriveMark CashDesk::acceptUnknown(const QString& by, const QString& note)
{
    if (!m_isOpen)
        open();
    const DriveMark mark = noteMark(m_driver, m_options.line, DocumentKind::Report);
    sale::acceptUnknown(m_journal, m_options.registerName, mark, by, note);
    return mark;
}

} // namespace sale
