#include "cashdesk.h"

#include "abstractfrdriver.h"
#include "documentissuer.h"
#include "errortable.h"
#include "exceptions.h"
#include "identifiedsale.h"
#include "money.h"
#include "plaindocument.h"
#include "receipterror.h"
#include "shiftisclosed.h"
#include "shiftopening.h"
#include "textlines.h"

namespace sale {

namespace {

const QString zReportName = QStringLiteral("zReport");
const QString accountingName = QStringLiteral("accountingReport");
const QString xReportName = QStringLiteral("xReport");
const QString textName = QStringLiteral("text");
const QString copyName = QStringLiteral("copy");

} // namespace

DocumentRequest CashDesk::requestOf(const QString& id, const QString& kind, const QJsonObject& details) const
{
    return plainRequest(id, kind, details, m_options.registerName);
}

/// One that waits may name its own.
FrUser CashDesk::cashierOf(const Entry& entry) const
{
    const auto* const queued = std::get_if<StoredDocument>(&entry);
    return queued == nullptr ? m_options.cashier : plainCashier(queued->request).value_or(m_options.cashier);
}

DocumentResult CashDesk::makeNumbered(const Entry& entry, const Movement& ours, const DocumentSteps& steps)
{
    return makeEntry(entry, [&](IdentifiedSale& document) {
        return issueDocument(
            m_driver, ours, steps, {m_options.line, cashierOf(entry), &document, m_options.opensShift});
    });
}

DocumentResult CashDesk::makeTraceless(const Entry& entry, const DocumentSteps& steps)
{
    return makeEntry(entry, [&](IdentifiedSale& document) {
        return issueTraceless(m_driver, steps, {m_options.line, cashierOf(entry), &document});
    });
}

DocumentResult CashDesk::makeCash(const Entry& entry, DocumentKind kind, qint64 kopecks)
{
    const double sum = receipt::roubles(kopecks);
    DocumentSteps steps;
    steps.open = [&] {
        m_driver.moneyCheckOpen(
            kind == DocumentKind::CashIn ? hw::fr::CheckCashIn : hw::fr::CheckCashOut, {});
    };
    steps.close = [&] { m_driver.moneyCheckClose(sum); };
    steps.finish = [&] { m_driver.moneyCheckWaitForPrint(); };
    return makeNumbered(entry, {kind, {}, kopecks}, steps);
}

DocumentResult CashDesk::cashIn(qint64 kopecks, const QString& id)
{
    const DocumentKind kind = DocumentKind::CashIn;
    return makeCash(
        requestOf(id, documentKindName(kind), {{QStringLiteral("sum"), receipt::roubles(kopecks)}}), kind,
        kopecks);
}

DocumentResult CashDesk::cashOut(qint64 kopecks, const QString& id)
{
    const DocumentKind kind = DocumentKind::CashOut;
    return makeCash(
        requestOf(id, documentKindName(kind), {{QStringLiteral("sum"), receipt::roubles(kopecks)}}), kind,
        kopecks);
}

DocumentResult CashDesk::makeShift(
    const Entry& entry, DocumentKind kind, bool isToBeOpen, const std::function<void()>& change)
{
    bool isNeeded = false;
    const DocumentSteps steps{.close = change};
    DocumentResult result = makeEntry(entry, [&](IdentifiedSale& document) {
        isNeeded = isShiftOpen(m_driver, m_options.line) != isToBeOpen;
        return isNeeded
            ? issueDocument(m_driver, {kind}, steps, {m_options.line, cashierOf(entry), &document})
            : DocumentResult();
    });
    if (!isNeeded && !result.isRepeated)
        result.id.clear();
    return result;
}

DocumentResult CashDesk::makeShiftOpening(const Entry& entry)
{
    return makeShift(entry, DocumentKind::ShiftOpening, true, [this] { m_driver.openShift(); });
}

DocumentResult CashDesk::openShift(const QString& id)
{
    return makeShiftOpening(requestOf(id, documentKindName(DocumentKind::ShiftOpening)));
}

DocumentResult CashDesk::makeShiftClosing(const Entry& entry)
{
    // The drivers say in their log alone that it was closed.
    return makeShift(entry, DocumentKind::ShiftClosing, false, [this] { m_driver.zReport(); });
}

DocumentResult CashDesk::closeShift(const QString& id)
{
    return makeShiftClosing(requestOf(id, zReportName));
}

DocumentResult CashDesk::makeAccountingReport(const Entry& entry)
{
    return makeNumbered(entry, {DocumentKind::Report}, {.close = [this] { m_driver.accountingReport(); }});
}

DocumentResult CashDesk::accountingReport(const QString& id)
{
    return makeAccountingReport(requestOf(id, accountingName));
}

DocumentResult CashDesk::issueReport(
    const QString& kind, const QJsonObject& details, const DocumentSteps& steps)
{
    return makeNumbered(requestOf({}, kind, details), {DocumentKind::Report}, steps);
}

DocumentResult CashDesk::makeXReport(const Entry& entry)
{
    DocumentSteps steps;
    steps.isOneRequest = true;
    steps.close = [this] {
        try {
            m_driver.xReport();
        } catch (const FrNoConnectionException&) {
            throw;
        } catch (const FrCommandException& refusal) {
            // It says no more than that its state forbids the command. Over XML silence comes as the same
            // exception.
            const bool isAnswer = m_options.line.isChecked() || isRefusalOfState(refusal.tr().ru());
            if (isAnswer && !isShiftOpen(m_driver, m_options.line))
                throw ShiftIsClosed();
            throw;
        }
    };
    return makeTraceless(entry, steps);
}

DocumentResult CashDesk::xReport(const QString& id)
{
    return makeXReport(requestOf(id, xReportName));
}

DocumentResult CashDesk::makeText(const Entry& entry, const QStringList& lines)
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
    return makeTraceless(entry, steps);
}

DocumentResult CashDesk::printText(const QStringList& lines, const QString& id)
{
    const auto count = static_cast<int>(lines.size());
    return makeText(requestOf(id, textName, {{QStringLiteral("lines"), count}}), lines);
}

DocumentResult CashDesk::makeCopy(const Entry& entry, quint32 documentNumber)
{
    return makeTraceless(entry,
        {.close = [&] { m_driver.printFnDocument(static_cast<long>(documentNumber)); },
            .isOneRequest = true});
}

DocumentResult CashDesk::printCopy(quint32 documentNumber, const QString& id)
{
    const auto number = static_cast<qint64>(documentNumber);
    return makeCopy(requestOf(id, copyName, {{QStringLiteral("documentNumber"), number}}), documentNumber);
}

DocumentResult CashDesk::makeLastCopy(const Entry& entry)
{
    DocumentSteps steps;
    steps.isOneRequest = true;
    steps.close = [this] {
        // HEX has no command for it; there the drive tells the number.
        if (!m_options.line.isChecked())
            m_driver.printLastFnDocument();
        else if (const quint32 number = m_driver.getFnInfo().fnStatus.lastFdNumber)
            m_driver.printFnDocument(static_cast<long>(number));
        else
            throw FrCommandException(QStringLiteral("В ФН нет документов"));
    };
    return makeTraceless(entry, steps);
}

DocumentResult CashDesk::printLastCopy(const QString& id)
{
    return makeLastCopy(requestOf(id, copyName));
}

DocumentResult CashDesk::makePlain(const Entry& entry, const PlainDocument& document)
{
    switch (document.kind) {
    case PlainDocument::OpenShift:
        return makeShiftOpening(entry);
    case PlainDocument::ZReport:
        return makeShiftClosing(entry);
    case PlainDocument::XReport:
        return makeXReport(entry);
    case PlainDocument::AccountingReport:
        return makeAccountingReport(entry);
    case PlainDocument::CashIn:
        return makeCash(entry, DocumentKind::CashIn, document.kopecks);
    case PlainDocument::CashOut:
        return makeCash(entry, DocumentKind::CashOut, document.kopecks);
    case PlainDocument::Text:
        return makeText(entry, document.lines);
    default:
        return document.documentNumber == 0 ? makeLastCopy(entry) : makeCopy(entry, document.documentNumber);
    }
}

DocumentResult CashDesk::make(const StoredDocument& queued)
{
    DocumentResult result;
    try {
        return makePlain(queued, plainDocumentOf(queued.request));
    } catch (const receipt::ReceiptError&) {
        result.failure = currentFailure();
    }
    result.id = queued.request.id;
    return result;
}

} // namespace sale
