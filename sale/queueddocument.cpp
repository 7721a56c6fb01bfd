#include "queueddocument.h"

#include "cashdesk.h"
#include "documentkind.h"
#include "documentstore.h"
#include "failureanswer.h"
#include "findingsjson.h"
#include "identifiedsale.h"
#include "itemsjson.h"
#include "journalerror.h"
#include "plaindocument.h"
#include "salereturn.h"
#include "saletr.h"
#include "shiftunchanged.h"

#include "currenttime.h"
#include "mockfactory.h"
#include "receipt.h"
#include "receiptcheck.h"
#include "receipterror.h"

namespace sale {

namespace {

using receipt::Finding;

/// What is wrong with the document or with what it asks for; anything else is the register's or ours, and
/// passes.
bool isOfDocument(const Failure& failure, bool wasOpen, bool closesShift)
{
    switch (failure.kind) {
    case ErrorKind::Data:
    case ErrorKind::Mark:
    case ErrorKind::Cash:
    case ErrorKind::ShiftClosed:
        return true;
    case ErrorKind::ShiftExpired:
        return !closesShift;
    case ErrorKind::Other:
        // What the register refuses for a reason of its own would be refused for ever, and hold up the rest.
        return (failure.isOfDriver && !wasOpen) || failure.exceptionName == QStringLiteral("ShiftUnchanged");
    default:
        return false;
    }
}

receipt::CheckedReceipt readReceipt(const QByteArray& body, receipt::Protocol protocol)
{
    const receipt::CheckedReceipt checked = receipt::checkedReceipt(
        body, {protocol, MockFactory<CurrentTime>::create()->getCurrentDateTime().date()});
    if (!checked.hasErrors())
        return checked;
    QList<receipt::ReceiptError> errors;
    for (const Finding& finding : checked.findings) {
        if (finding.severity == Finding::Error)
            errors.append(receipt::ReceiptError(finding.path, finding.reason, finding.given));
    }
    throw receipt::ReceiptError(errors);
}

/// One document on its way out of the queue.
class Making
{
public:
    Making(CashDesk& desk, const StoredDocument& waiting, bool wasOpen)
        : m_desk(desk)
        , m_waiting(waiting)
        , m_wasOpen(wasOpen)
    {
    }

    QueuedDocument run()
    {
        try {
            isReceiptName(m_waiting.request.kind) ? issue() : make();
        } catch (...) {
            m_failure = currentFailure();
        }
        try {
            judge();
        } catch (const JournalError&) {
            meetLostJournal();
        }
        fill();
        return m_made;
    }

private:
    void reach()
    {
        if (m_desk.isOpen())
            return;
        m_isOfRegister = true;
        m_desk.open();
        m_isOfRegister = false;
    }

    void issue()
    {
        const receipt::CheckedReceipt checked
            = readReceipt(completedBody(m_desk.journal(), m_waiting.request), m_desk.options().line.protocol);
        m_warnings = checked.findings;
        m_answer.total = checked.receipt.total;
        m_answer.change = checked.receipt.paid - checked.receipt.total;
        m_answer.items = itemsJson(checked.receipt);
        reach();
        const IssueResult result = m_desk.issue(m_waiting, checked.receipt);
        m_answer.items = itemsJson(checked.receipt, result.marks);
        m_warnings += result.warnings;
        take(result.verdict, result.failure, result.isRepeated);
    }

    void make()
    {
        const PlainDocument document = plainDocumentOf(m_waiting.request);
        if (document.kopecks != 0)
            m_answer.total = document.kopecks;
        reach();
        const DocumentResult result = m_desk.make(m_waiting);
        take(result.verdict, result.failure, result.isRepeated);
        const QString silent = tr("the register was silent, and the request was sent again");
        if (!result.failure && !result.isDone())
            m_answer.error = AnswerError{ErrorKind::Line, silent, QStringLiteral("Refusal")};
        if (result.isSentAgain)
            m_warnings.append({Finding::Warning, {}, {},
                tr("the register was silent, and the request was sent again: it may have printed more than once")});
        if (!result.failure && result.verdict.outcome == Outcome::None)
            throw ShiftUnchanged(document.kind == PlainDocument::OpenShift);
    }

    void take(const Verdict& verdict, const std::optional<Failure>& failure, bool isRepeated)
    {
        m_verdict = verdict;
        m_failure = failure;
        m_answer.isReplayed = isRepeated;
    }

    bool isWaiting(const StoredDocument& document) const
    {
        return document.state == DocumentState::Queued
            && document.request.registerName == m_waiting.request.registerName;
    }

    /// By what the journal has now: that alone says whether anything was begun.
    void judge()
    {
        StoredDocument record = m_desk.journal().findId(m_waiting.request.id).value_or(m_waiting);
        // What was posted anew with another body has not failed.
        if (isWaiting(record) && record.digest == m_waiting.digest && m_failure && !m_isOfRegister
            && isOfDocument(*m_failure, m_wasOpen, m_desk.options().closesShift))
            record = m_desk.journal().refuse(
                record.request.id, {{}, keptFailure(*m_failure), keptWarnings(m_warnings)});
        if (isWaiting(record))
            m_made.held = m_failure ? m_failure->kind : ErrorKind::Internal;
        else if (isTakenAway(record))
            m_failure.reset();
        m_made.answer = answerOf(record, m_desk.options().line.protocol);
        // The journal could not take it.
        if (record.state == DocumentState::Running && m_verdict.outcome == Outcome::Issued)
            m_made.answer.take(m_verdict);
        m_made.stored = record.state;
    }

    /// Withdrawn, moved or made by somebody else in the meantime, which is no failure.
    bool isTakenAway(const StoredDocument& record) const
    {
        return record.state != DocumentState::Running && m_verdict.outcome == Outcome::None && m_failure
            && m_failure->exceptionName == QStringLiteral("JournalError");
    }

    /// What was begun is settled by the next start; what was not waits.
    void meetLostJournal()
    {
        const Failure lost = currentFailure();
        m_made.answer = answerOf(m_waiting, m_desk.options().line.protocol);
        if (m_verdict.outcome == Outcome::Issued)
            m_made.answer.take(m_verdict);
        else if (m_verdict.outcome == Outcome::None)
            m_made.held = lost.kind;
        else
            m_made.answer.state = DocumentState::Running;
        if (!m_failure || m_made.held)
            m_failure = lost;
    }

    void fill()
    {
        DocumentAnswer& answer = m_made.answer;
        answer.isReplayed = m_answer.isReplayed;
        answer.total = m_answer.total;
        answer.change = m_answer.change;
        answer.items = m_answer.items;
        answer.warnings = findingsJson(m_warnings);
        answer.error = m_failure ? std::optional(answerErrorOf(*m_failure)) : m_answer.error;
    }

    CashDesk& m_desk;
    const StoredDocument m_waiting;
    const bool m_wasOpen;
    Verdict m_verdict;
    std::optional<Failure> m_failure;
    /// It came of reaching the register, which no document is to blame for.
    bool m_isOfRegister = false;
    QList<Finding> m_warnings;
    /// What is known besides the journal.
    DocumentAnswer m_answer;
    QueuedDocument m_made;
};

} // namespace

QueuedDocument makeQueued(CashDesk& desk, const QString& id, bool wasOpen)
{
    try {
        const std::optional<StoredDocument> known = desk.journal().findId(id);
        if (!known)
            throw JournalError(tr("the journal has no document %1").arg(id));
        if (known->state == DocumentState::Queued
            && known->request.registerName == desk.options().registerName)
            return Making(desk, *known, wasOpen).run();
        QueuedDocument made{answerOf(*known, desk.options().line.protocol)};
        made.answer.isReplayed = true;
        return made;
    } catch (...) {
        const Failure failure = currentFailure();
        QueuedDocument made{{.id = id}, failure.kind};
        made.answer.error = answerErrorOf(failure);
        return made;
    }
}

} // namespace sale
