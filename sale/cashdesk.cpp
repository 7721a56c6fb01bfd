#include "cashdesk.h"

#include "abstractfrdriver.h"
#include "currenttime.h"
#include "documentid.h"
#include "identifiedsale.h"
#include "marknoting.h"
#include "mockfactory.h"
#include "receiptcheck.h"
#include "receipterror.h"
#include "receiptissuer.h"
#include "registerstart.h"
#include "review.h"

namespace sale {

namespace {

QString idOf(const DocumentRequest& request)
{
    return request.id;
}

QString idOf(const StoredDocument& document)
{
    return document.request.id;
}

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

bool CashDesk::reachRegister(bool isSettled)
{
    if (m_isOpen && isSettled)
        return false;
    // One in question is settled by that, if it was begun on this register.
    open();
    return true;
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
    if (result.failure || result.clock.isLineLost)
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
    reachRegister(result.isFinal);
    result = issueReceipt(m_driver, checked.receipt,
        {m_options.line, &document, m_options.markPolicy, knownMark(), m_options.cashier,
            m_options.opensShift});
    result.warnings = checked.findings + result.warnings;
    m_isMarkOfConnection = !result.isRepeated && !result.failure;
}

IdentifiedSale CashDesk::documentOf(const Entry& entry) const
{
    return std::visit(
        [this](const auto& document) {
            requireDocumentId(m_journal, idOf(document));
            return IdentifiedSale(m_journal, document);
        },
        entry);
}

IssueResult CashDesk::issueReceiptOf(const Entry& entry, const ReceiptSource& source)
{
    IssueResult result;
    guarded(result, [&] {
        IdentifiedSale document = documentOf(entry);
        answerFromJournal(result, document.known());
        if (!result.isRepeated || !result.isFinal)
            issueInto(result, document, source);
    });
    result.id = std::visit([](const auto& document) { return idOf(document); }, entry);
    return result;
}

DocumentRequest CashDesk::receiptRequestOf(const QString& id, const QByteArray& body) const
{
    return {id.isEmpty() ? newDocumentId() : id, documentKindName(DocumentKind::Sale), body,
        m_options.registerName};
}

IssueResult CashDesk::issue(const QString& id, const QByteArray& json)
{
    return issueReceiptOf(receiptRequestOf(id, json), [&] {
        return receipt::checkedReceipt(
            json, {m_options.line.protocol, MockFactory<CurrentTime>::create()->getCurrentDateTime().date()});
    });
}

IssueResult CashDesk::issue(const QString& id, const receipt::Receipt& receipt, const QByteArray& body)
{
    return issueReceiptOf(receiptRequestOf(id, body), [&] { return receipt::CheckedReceipt{receipt, {}}; });
}

IssueResult CashDesk::issue(const StoredDocument& queued, const receipt::Receipt& receipt)
{
    return issueReceiptOf(queued, [&] { return receipt::CheckedReceipt{receipt, {}}; });
}

DocumentResult CashDesk::makeEntry(const Entry& entry, const Work& work)
{
    DocumentResult result;
    guarded(result, [&] {
        IdentifiedSale document = documentOf(entry);
        answerFromJournal(result, document.known());
        if (result.isRepeated && result.isFinal)
            return;
        if (reachRegister(result.isFinal))
            answerFromJournal(result, document.known());
        if (!result.isRepeated)
            result = work(document);
    });
    if (result.failure || result.verdict.outcome != Outcome::None)
        m_isMarkOfConnection = false;
    result.id = std::visit([](const auto& document) { return idOf(document); }, entry);
    return result;
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
