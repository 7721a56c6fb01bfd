#pragma once

#include "documentstore.h"
#include "drivemark.h"
#include "failure.h"
#include "finding.h"
#include "markcheck.h"
#include "markentry.h"
#include "movement.h"
#include "verdict.h"

#include <optional>

namespace sale {

/// A document of ours on its way through the journal: under the id that the caller gave it, so that it can be
/// asked for again without being done twice, or under one of its own. All operations throw JournalError when
/// the journal fails.
class IdentifiedSale
{
public:
    /// The journal must outlive the sale. Nothing is written yet. Throws IdConflict when the id belongs to
    /// another document; the body of one that is not issued may change.
    IdentifiedSale(DocumentStore& store, const DocumentRequest& request);
    /// The same for a receipt, which is what the caller made it of: mostly the JSON text, whose blanks and
    /// order of fields do not count; any other bytes are taken as they are.
    IdentifiedSale(DocumentStore& store, const QString& id, const QByteArray& receipt);
    /// One that waits in the journal: it is begun only if it still does, for the same register.
    IdentifiedSale(DocumentStore& store, const StoredDocument& queued);

    const QString& id() const { return m_request.id; }
    const QString& registerName() const { return m_request.registerName; }
    DocumentStore& store() const { return m_store; }
    /// What the journal knows of it; nothing for one that is new.
    std::optional<StoredDocument> record() const { return m_store.findId(id()); }
    /// The same; one that waits is as it was given: whether it still does is looked at when it is begun.
    std::optional<StoredDocument> known() const { return m_queued ? m_queued : record(); }
    /// The last attempt at it.
    std::optional<StoredAttempt> lastAttempt() const;
    /// What a host may act on: only NotIssued may be done, also said of a document that is new. One that was
    /// begun and not settled is Unknown.
    Verdict verdict() const;
    /// True for one that was begun and not settled: the register was not asked, or did not answer.
    bool isUnsettled() const;

    /// Before the document's first byte. Throws JournalError also when it is done or under way elsewhere, or
    /// waits no longer, DocumentExpired when its time is over. The marked goods of one that waits stand in
    /// the journal already. The verdicts are what the register said of them.
    void begin(const DriveMark& before, const MarkEntry& goods = {}, const Movement& movement = {},
        const QList<MarkCheck>& verdicts = {});
    /// What is learnt of the attempt that was begun: what it failed of, and what has become of it.
    void note(const Failure& failure, const Verdict& verdict);
    void note(const QList<receipt::Finding>& warnings);
    /// When the outcome is known. One that was never closed, or was cancelled, was refused; NotIssued says
    /// that the register was asked. NotCancelled leaves the document to be settled. The mark is that behind
    /// the document, where it is known, the time that of the register's clock there.
    void settle(
        const Verdict& verdict, const std::optional<DriveMark>& after = {}, const QDateTime& time = {});

private:
    DocumentStore& m_store;
    DocumentRequest m_request;
    /// One that waits.
    std::optional<StoredDocument> m_queued;
    /// 0 before it was begun.
    int m_attempt = 0;
    /// The register has said no, and the line did not fail.
    bool m_isRefused = false;
};

/// What the journal has as a verdict; Unknown for a document that was begun and not settled, NotIssued for
/// one that waits.
Verdict verdictOf(const StoredDocument& document);
/// Takes into the result of an operation what the journal says of its document before it: one that may be
/// made leaves it without a verdict, any other is repeated, and final when it is settled.
template <typename Result>
void answerFromJournal(Result& result, const std::optional<StoredDocument>& known)
{
    result.isRepeated = known && verdictOf(*known).outcome != Outcome::NotIssued;
    result.verdict = result.isRepeated ? verdictOf(*known) : Verdict();
    result.isFinal = !known || known->state != DocumentState::Running;
}
/// What the journal keeps of a failure and of warnings. A register that has refused the document at its close
/// was "asked" whether it has it all the same, one that has refused it before was not.
QJsonObject keptFailure(const Failure& failure, const Verdict& verdict = {});
QJsonArray keptWarnings(const QList<receipt::Finding>& warnings);
/// How the journal puts a verdict; nothing for one that leaves the document open.
std::optional<DocumentEnding> endingOf(const Verdict& verdict);

} // namespace sale
